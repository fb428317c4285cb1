#include "translator.h"

#include "calllog.h"

#include <QCoreApplication>
#include <QLocale>

struct TextRow
{
    int id;
    const char *english;
};

static constexpr TextRow texts[] = {
    {Translator::PageGauges, QT_TRANSLATE_NOOP("Translator", "Gauges")},
    {Translator::PageVehicle, QT_TRANSLATE_NOOP("Translator", "Vehicle")},
    {Translator::PageClimate, QT_TRANSLATE_NOOP("Translator", "Climate")},
    {Translator::PageParking, QT_TRANSLATE_NOOP("Translator", "Parking")},
    {Translator::PageSettings, QT_TRANSLATE_NOOP("Translator", "Settings")},
    {Translator::PageAbout, QT_TRANSLATE_NOOP("Translator", "About")},
    {Translator::ZoneFront, QT_TRANSLATE_NOOP("Translator", "Front")},
    {Translator::ZoneRear, QT_TRANSLATE_NOOP("Translator", "Rear")},
};

Translator::Translator()
{
    if (!setLanguage(QLocale::system().name().left(2)))
        setLanguage(QStringLiteral("en"));
}

Translator *Translator::instance()
{
    static auto *const translator = new Translator;
    return translator;
}

QString Translator::text(int id) const
{
    CallLog::report("Translator::text", id);
    for (const TextRow &row : texts) {
        if (row.id != id)
            continue;
        const QString translated = m_table.translate("Translator", row.english);
        return translated.isEmpty() ? QString::fromLatin1(row.english) : translated;
    }
    return QString();
}

QStringList Translator::languages()
{
    return {QStringLiteral("en"), QStringLiteral("de"), QStringLiteral("fr"), QStringLiteral("es")};
}

bool Translator::setLanguage(const QString &language)
{
    if (!languages().contains(language))
        return false;
    if (language == m_language)
        return true;
    if (!m_table.load(QStringLiteral(":/nordahost/nordahost_") + language))
        return false;
    m_language = language;
    emit languageChanged();
    return true;
}

QString Translator::language() const
{
    return m_language;
}
