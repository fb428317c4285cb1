#include "report/html.h"

/** Control characters have no place in a page, not even escaped. */
static QString printable(QString text)
{
    for (QChar &c : text) {
        const bool isSpace = c == QLatin1Char('\n') || c == QLatin1Char('\t');
        if (c.category() == QChar::Other_Control && !isSpace)
            c = QChar::ReplacementCharacter;
    }
    return text;
}

static QByteArray escaped(const QString &text)
{
    return printable(text)
        .toHtmlEscaped()
        .replace(QLatin1Char('\''), QLatin1String("&#39;"))
        .toUtf8();
}

void Html::writeTag(const char *tag, const Attributes &attributes)
{
    m_content += '<';
    m_content += tag;
    for (const Attribute &attribute : attributes) {
        m_content += ' ';
        m_content += attribute.name;
        m_content += "=\"" + escaped(attribute.value) + '"';
    }
    m_content += '>';
}

Html &Html::begin(const char *tag, const Attributes &attributes)
{
    writeTag(tag, attributes);
    m_open.append(tag);
    return *this;
}

Html &Html::end()
{
    m_content += "</" + m_open.takeLast() + ">\n";
    return *this;
}

Html &Html::text(const QString &text)
{
    m_content += escaped(text);
    return *this;
}

Html &Html::element(const char *tag, const QString &text, const Attributes &attributes)
{
    return begin(tag, attributes).text(text).end();
}

Html &Html::single(const char *tag, const Attributes &attributes)
{
    writeTag(tag, attributes);
    return *this;
}

Html &Html::verbatim(const QByteArray &content)
{
    m_content += content;
    return *this;
}

QByteArray Html::page() const
{
    Q_ASSERT(m_open.isEmpty());
    return m_content;
}
