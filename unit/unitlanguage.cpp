#include "unitlanguage.h"

#include "translator.h"
#include "unitsettings.h"

#include <QCoreApplication>

/** A linker leaves out what nobody names in a static library. */
static void initTexts()
{
    Q_INIT_RESOURCE(nordaunit_translations);
}

UnitLanguage::UnitLanguage(QObject *parent) : QObject(parent)
{
    initTexts();
    connect(Translator::instance(), &Translator::languageChanged, this, &UnitLanguage::load);
    load();
}

UnitLanguage::~UnitLanguage() = default;

/** Widgets learn of it by the event that Qt sends to all of them. */
void UnitLanguage::load()
{
    QCoreApplication::removeTranslator(&m_texts);
    if (m_texts.load(QStringLiteral(":/nordaunit/nordaunit_") + Translator::instance()->language()))
        QCoreApplication::installTranslator(&m_texts);
}

void UnitLanguage::restore()
{
    Translator *host = Translator::instance();
    const QString kept = unitsettings::language();
    if (!kept.isEmpty() && !host->setLanguage(kept))
        qWarning("UnitLanguage: expected %s, got '%s'", qPrintable(expected()), qPrintable(kept));
    connect(host, &Translator::languageChanged, this,
            [host] { unitsettings::keepLanguage(host->language()); });
}

QLocale UnitLanguage::locale()
{
    return QLocale(Translator::instance()->language());
}

QString UnitLanguage::expected()
{
    QStringList names = Translator::languages();
    for (QString &name : names)
        name = QLatin1Char('\'') + name + QLatin1Char('\'');
    const QString last = names.takeLast();
    return names.join(QStringLiteral(", ")) + QStringLiteral(" or ") + last;
}
