#pragma once

#include <QByteArray>

#include <cstdint>

/** Reads values out of a fuzzer's bytes; beyond their end everything is 0. */
class FuzzInput
{
public:
    FuzzInput(const uint8_t *data, size_t size) : m_data(data), m_size(size) {}

    bool atEnd() const { return m_size == 0; }
    uint8_t byte()
    {
        if (m_size == 0)
            return 0;
        --m_size;
        return *m_data++;
    }
    int number()
    {
        // Small numbers and the edges are worth more tries than others.
        static constexpr int edges[] = {0, 1, -1, 255, 256, 65535, INT32_MAX, INT32_MIN};
        const uint8_t kind = byte();
        if (kind < 200)
            return kind;
        if (kind < 208)
            return edges[kind - 200];
        uint32_t value = byte();
        for (int i = 0; i < 3; ++i)
            value = value << 8 | byte();
        return int(value);
    }
    QByteArray bytes()
    {
        const uint8_t kind = byte();
        if (kind == 0)
            return QByteArray();
        const size_t length = kind == 255 ? 5000 : qMin<size_t>(kind - 1u, m_size);
        QByteArray taken(int(length), 'x');
        for (size_t i = 0; i < length && kind != 255; ++i)
            taken[int(i)] = char(byte());
        return taken;
    }

private:
    const uint8_t *m_data;
    size_t m_size;
};
