#pragma once

#include "nordahost_global.h"

#include <QObject>
#include <QStringList>
#include <QTranslator>

/** The host's translation tables: texts that plugins show without owning them. */
class NORDAHOST_EXPORT Translator : public QObject
{
    Q_OBJECT
public:
    /** Numbers of the texts. */
    enum TextId : int {
        PageGauges = 250,
        PageVehicle = 251,
        PageClimate = 252,
        PageParking = 253,
        PageSettings = 254,
        PageAbout = 255,
        ZoneFront = 261,
        ZoneRear = 262,
    };
    Q_ENUM(TextId)

    /** The one object: made on the first call, never null, never deleted. */
    static Translator *instance();

    /** The text in the current language; empty for a number that no table has. */
    Q_INVOKABLE
    QString text(int id) const;
    /** The languages that have a table, by their two letters. */
    static QStringList languages();
    /**
     * Changes the language and emits `languageChanged()`.
     * @param language  one of `languages()`
     * @return false, and nothing changes, for a language without a table
     */
    Q_INVOKABLE
    bool setLanguage(const QString &language);
    /** The current language's two letters. */
    Q_INVOKABLE
    QString language() const;

signals:
    /** The language changed: texts are to be read again. */
    void languageChanged();

private:
    Translator();

    QString m_language;
    QTranslator m_table;
};
