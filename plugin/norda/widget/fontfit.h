#pragma once

#include <QFont>

#include <array>

class QLabel;
class QString;

namespace norda {

/** Gives a label the largest font in which its text fits, with little to do while the text fits. */
class FontFit
{
public:
    void fit(QLabel *label, const QString &text);

private:
    int fittingPixels(const QLabel *label, const QString &text);
    bool surelyFits(const QString &text, const QFont &font, int width);

    static constexpr int asciiCount = 128;

    QFont m_given;    // what a label has made of the font that it was given last
    QFont m_measured; // whose letters have these widths
    std::array<int, asciiCount> m_widths{};
};

} // namespace norda
