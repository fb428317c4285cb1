#pragma once

#include "bitfield.h"

namespace module {

/** Builds the data of a message from its signals' values. */
class FrameBuilder
{
public:
    /** @param data  what is not set; 0 where it is too short */
    explicit FrameBuilder(const DbcMessage &message, const QByteArray &data = QByteArray());

    /**
     * Sets a signal to the raw value next to a physical one, and its multiplexors so that they
     * select it.
     * @return false, with nothing set, where its bits cannot hold that value
     */
    bool set(int signal, double value);
    /** The same for a raw value: a whole number, or a floating point one's bits. */
    bool setRaw(int signal, qint64 raw);

    QByteArray data() const;

private:
    bool put(const DbcSignal &signal, qint64 raw, PaddedFrame *frame) const;

    DbcMessage m_message;
    PaddedFrame m_frame;
};

} // namespace module
