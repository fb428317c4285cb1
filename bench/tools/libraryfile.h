#pragma once

#include <QByteArray>
#include <QStringList>

#include <elf.h>
#include <link.h>

/** The header, sections and dynamic symbols of a library's file; every offset is checked. */
class LibraryFile
{
public:
    using Header = ElfW(Ehdr);

    explicit LibraryFile(const QString &path);

    bool isLibrary() const;
    /** For a library only. */
    const Header &header() const;
    QStringList undefinedSymbols() const;
    QStringList neededLibraries() const;

private:
    using Section = ElfW(Shdr);
    using Symbol = ElfW(Sym);
    using Dynamic = ElfW(Dyn);

    template <typename Value>
    const Value *at(quint64 offset) const;
    template <typename Entry, typename Visit>
    void forEachEntry(unsigned type, Visit visit) const;
    const Section *section(unsigned index) const;
    QString textAt(quint64 offset) const;

    QByteArray m_bytes;
};
