#pragma once

#include <QLabel>

#include <functional>

/**
 * Whether a label ends a text that is too long for it with an ellipsis, and keeps it whole.
 * @param show  brings a text to the label
 */
inline QString faultOfElision(QLabel *label, const QString &longText,
                              const std::function<void(const QString &)> &show)
{
    show(longText);
    const QString whole = label->text();
    const QString elided =
        label->fontMetrics().elidedText(whole, Qt::ElideRight, label->contentsRect().width());
    if (!elided.endsWith(QChar(0x2026)))
        return QStringLiteral("the text is not too long");
    const QImage drawn = label->grab().toImage();
    label->setText(elided);
    return drawn == label->grab().toImage() ? QString() : QStringLiteral("cut without an ellipsis");
}
