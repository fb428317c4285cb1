#pragma once

#include <QStringList>

#include <vector>

/**
 * The command line, in two parts: words with one dash are Qt's, as in "-platform linuxfb", and
 * those with two are the unit's. Qt would take either for its own, "--plugin" for instance.
 */
struct Arguments
{
    Arguments(int argc, char *argv[]);

    QStringList own;        ///< without the program's name
    std::vector<char *> qt; ///< with the program's name, and a null at the end
    int qtCount;            ///< as Qt counts them; Qt changes both
};
