#include "tools/libraryfile.h"

#include <QFileInfo>

#include <cstring>

static constexpr qint64 largestLibrary = 256'000'000;

LibraryFile::LibraryFile(const QString &path)
{
    QFile file(path);
    // Opening a pipe would wait for its writer.
    if (QFileInfo(path).isFile() && file.open(QIODevice::ReadOnly))
        m_bytes = file.read(qMin(file.size(), largestLibrary));
}

template <typename Value>
const Value *LibraryFile::at(quint64 offset) const
{
    const quint64 size = quint64(m_bytes.size());
    if (offset > size || size - offset < sizeof(Value) || offset % alignof(Value) != 0)
        return nullptr;
    return reinterpret_cast<const Value *>(m_bytes.constData() + offset);
}

bool LibraryFile::isLibrary() const
{
    const auto *header = at<Header>(0);
    return header && std::memcmp(header->e_ident, ELFMAG, SELFMAG) == 0 && header->e_type == ET_DYN;
}

const LibraryFile::Header &LibraryFile::header() const
{
    return *at<Header>(0);
}

const LibraryFile::Section *LibraryFile::section(unsigned index) const
{
    return index < header().e_shnum
               ? at<Section>(header().e_shoff + quint64(index) * sizeof(Section))
               : nullptr;
}

QString LibraryFile::textAt(quint64 offset) const
{
    if (offset >= quint64(m_bytes.size()))
        return {};
    const int start = int(offset);
    const int length = m_bytes.indexOf('\0', start) - start;
    return QString::fromLatin1(m_bytes.mid(start, qMax(0, length)));
}

template <typename Entry, typename Visit>
void LibraryFile::forEachEntry(unsigned type, Visit visit) const
{
    for (unsigned i = 0; const Section *table = section(i); ++i) {
        const Section *strings = section(table->sh_link);
        if (table->sh_type != type || !strings)
            continue;
        const quint64 start = strings->sh_offset;
        const auto text = [this, start](quint64 offset) { return textAt(start + offset); };
        for (quint64 k = 0; k < table->sh_size / sizeof(Entry); ++k) {
            const auto *entry = at<Entry>(table->sh_offset + k * sizeof(Entry));
            if (!entry)
                return;
            visit(*entry, text);
        }
    }
}

QStringList LibraryFile::undefinedSymbols() const
{
    QStringList names;
    forEachEntry<Symbol>(SHT_DYNSYM, [&names](const Symbol &symbol, auto text) {
        const bool isWeak = ELF64_ST_BIND(symbol.st_info) == STB_WEAK;
        if (symbol.st_shndx == SHN_UNDEF && !isWeak && symbol.st_name != 0)
            names.append(text(symbol.st_name));
    });
    return names;
}

QStringList LibraryFile::neededLibraries() const
{
    QStringList names;
    forEachEntry<Dynamic>(SHT_DYNAMIC, [&names](const Dynamic &entry, auto text) {
        if (entry.d_tag == DT_NEEDED)
            names.append(text(entry.d_un.d_val));
    });
    return names;
}
