#pragma once

namespace norda {

/**
 * The module's code for what the head unit plays and shows.
 * @param source   number of the current source
 * @param display  number of the current display
 */
unsigned char moduleSourceCode(int source, int display);

} // namespace norda
