#pragma once

#include "testpaths.h"

#include <QFile>
#include <QRegularExpression>
#include <QStringList>

/** The options of a program's help, without Qt's own. */
inline QStringList optionsOf(const QString &help)
{
    static const QRegularExpression option(QStringLiteral("^  (?:-\\w, )?(--(?!help-all)[a-z-]+)"),
                                           QRegularExpression::MultilineOption);
    QStringList options;
    for (auto found = option.globalMatch(help); found.hasNext();)
        options.append(found.next().captured(1));
    return options;
}

/** Options that have no paragraph in a program's manual page. */
inline QStringList missingInManual(const QString &program, const QStringList &options)
{
    QFile page(testpaths::source(QStringLiteral("packaging/%1.1").arg(program)));
    if (!page.open(QIODevice::ReadOnly))
        return {page.fileName()};
    const QString manual = QString::fromUtf8(page.readAll()).remove('\\');
    QStringList missing;
    for (const QString &option : options) {
        const QRegularExpression paragraph("^\\.B.*" + option + "\\b",
                                           QRegularExpression::MultilineOption);
        if (!manual.contains(paragraph))
            missing.append(option);
    }
    return missing;
}
