#include "fontfit.h"

#include <QFontMetrics>
#include <QLabel>

namespace norda {

static constexpr int largest = 30;

void FontFit::fit(QLabel *label, const QString &text)
{
    const int pixels = fittingPixels(label, text);
    if (label->font().pixelSize() == pixels && label->font() == m_given)
        return;
    // A fresh font on purpose: family and weight of the label's previous one are dropped.
    QFont font;
    font.setPixelSize(pixels);
    label->setFont(font);
    m_given = label->font();
}

int FontFit::fittingPixels(const QLabel *label, const QString &text)
{
    if (label->font().pixelSize() == largest && surelyFits(text, label->font(), label->width()))
        return largest;
    QFont probe = label->font();
    int pixels = largest;
    for (; pixels > 1; --pixels) {
        probe.setPixelSize(pixels);
        if (QFontMetrics(probe).horizontalAdvance(text) <= label->width())
            break;
    }
    return pixels;
}

/** Whether the letters fit even one by one, which unlike a whole text are measured once only. */
bool FontFit::surelyFits(const QString &text, const QFont &font, int width)
{
    static constexpr int roundingAndKerning = 1; // most that a letter is wider in a text
    if (font != m_measured) {
        m_measured = font;
        const QFontMetrics metrics(font);
        for (int letter = 0; letter < asciiCount; ++letter)
            m_widths[size_t(letter)] =
                metrics.horizontalAdvance(QChar(letter)) + roundingAndKerning;
    }
    int sum = 0;
    for (const QChar letter : text) {
        if (letter < QLatin1Char(' ') || letter.unicode() >= asciiCount)
            return false; // a tab is as wide as its place makes it
        sum += m_widths[letter.unicode()];
    }
    return sum <= width;
}

} // namespace norda
