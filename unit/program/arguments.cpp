#include "program/arguments.h"

#include <cstring>

Arguments::Arguments(int argc, char *argv[]) : qt({argv[0]})
{
    bool isOwn = true;
    for (int i = 1; i < argc; ++i) {
        const char *word = argv[i];
        if (word[0] == '-') // any other is the value of the option before it
            isOwn = word[1] == '-' || std::strcmp(word, "-h") == 0 || std::strcmp(word, "-v") == 0;
        if (isOwn)
            own.append(QString::fromLocal8Bit(word));
        else
            qt.push_back(argv[i]);
    }
    qtCount = int(qt.size());
    qt.push_back(nullptr);
}
