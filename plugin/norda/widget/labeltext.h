#pragma once

#include <QLabel>
#include <QString>

#include <iterator>

namespace norda {

/** A number as text, without taking memory. */
class NumberText
{
public:
    // Not std::to_chars(), whose table of digits would keep the library from being unloaded.
    explicit NumberText(unsigned number)
    {
        do {
            *--m_first = char('0' + number % 10);
            number /= 10;
        } while (number > 0);
    }
    Q_DISABLE_COPY(NumberText)

    QLatin1String text() const { return QLatin1String(m_first, std::end(m_digits)); }

private:
    char m_digits[10];
    char *m_first = std::end(m_digits);
};

/**
 * A label's text that is composed anew with every value. The one that the label shows is left alone
 * and the next is composed in another, so neither takes memory again once it has been as long.
 */
class LabelText
{
public:
    LabelText(QLabel *label = nullptr) : m_label(label) {}

    QLabel *label() const { return m_label; }

    template <typename... Parts>
    void show(const Parts &...parts)
    {
        m_next.resize(0);
        (m_next.append(parts), ...);
        if (m_label->text() == m_next)
            return;
        m_label->setText(m_next);
        m_next.swap(m_shown);
    }

private:
    QLabel *m_label;
    QString m_shown;
    QString m_next;
};

} // namespace norda
