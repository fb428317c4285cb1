#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

/** Writes HTML element by element. Every text and every attribute is escaped. */
class Html
{
public:
    struct Attribute
    {
        const char *name;
        QString value;
    };
    using Attributes = QVector<Attribute>;

    Html &begin(const char *tag, const Attributes &attributes = {});
    /** Ends the element that was begun last. */
    Html &end();
    Html &text(const QString &text);
    /** An element with a text and nothing else. */
    Html &element(const char *tag, const QString &text, const Attributes &attributes = {});
    /** An element that has no content and no end. */
    Html &single(const char *tag, const Attributes &attributes);
    /** The program's own style or script, which is not escaped. */
    Html &verbatim(const QByteArray &content);

    /** The page so far; every element must have ended. */
    QByteArray page() const;

private:
    void writeTag(const char *tag, const Attributes &attributes);

    QByteArray m_content;
    QVector<QByteArray> m_open;
};
