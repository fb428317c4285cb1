// Files of any content as libraries: what --check reads of a plugin before it loads it.

#include "inputfile.h"
#include "tools/libraryfile.h"

static InputFile *file;

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    file = new InputFile(argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const LibraryFile library(file->hold(data, size));
    if (!library.isLibrary())
        return 0;
    library.undefinedSymbols();
    library.neededLibraries();
    return 0;
}
