#pragma once

/**
 * Opens what is closed of standard input, output and error, on nothing. Otherwise the next file or
 * pipe would take their place, and what is printed would go there.
 */
void ensureStandardStreams();
