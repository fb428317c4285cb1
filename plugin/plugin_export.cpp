#include "plugin.h"

#include <QtPlugin>

/*
 * The library's two Qt entry points and its metadata record. moc would write the C++ class's own
 * name into the record, but head units look for "Plugin1", so the record is written here: the
 * signature that Qt searches the file for, four version bytes, then a CBOR map from Qt's key
 * numbers to texts.
 */

static constexpr unsigned char keyIid = 2;
static constexpr unsigned char keyClassName = 3;
static constexpr unsigned char cborMap = 0xbf;
static constexpr unsigned char cborBreak = 0xff;
static constexpr unsigned char cborText8 = 0x78; // text, length in the next byte
static constexpr unsigned char cborText = 0x60;  // text, length in the low five bits

QT_PLUGIN_METADATA_SECTION
static constexpr unsigned char qt_pluginMetaData[] = {
    // clang-format off
    'Q', 'T', 'M', 'E', 'T', 'A', 'D', 'A', 'T', 'A', ' ', '!',
    0, QT_VERSION_MAJOR, QT_VERSION_MINOR, qPluginArchRequirements(),
    cborMap,
    keyIid, cborText8, 25,
    'c', 'o', 'm', '.', 's', 't', 'a', 'v', 'e', 'l', '.', 'Q', 't', '.',
    'n', 'o', 'r', 'd', 'a', 'P', 'l', 'u', 'g', 'i', 'n',
    keyClassName, cborText | 7,
    'P', 'l', 'u', 'g', 'i', 'n', '1',
    cborBreak,
    // clang-format on
};

QT_MOC_EXPORT_PLUGIN(norda::Plugin, Plugin)
