#pragma once

#include <QLocale>
#include <QObject>
#include <QTranslator>

/** The language of a head unit is that of its host; the unit's own texts follow it. */
class UnitLanguage : public QObject
{
    Q_OBJECT
public:
    explicit UnitLanguage(QObject *parent = nullptr);
    ~UnitLanguage() override;

    /** Returns to the language that is kept in the unit's settings, and keeps it from now on. */
    void restore();
    /** How the language writes numbers, and what it measures in. */
    static QLocale locale();
    /** The languages that there are, for a message about another one. */
    static QString expected();

private:
    void load();

    QTranslator m_texts;
};
