#pragma once

#include "carfiles.h"
#include "dbc/framedecoder.h"
#include "quantities.h"

#include <memory>

namespace module {

/** Turns the frames of a car's own bus into quantities, as its DBC file and a map explain them. */
class BusDecoder
{
public:
    /** @param error  one line that names the file, when one of them cannot be used */
    static std::unique_ptr<BusDecoder> open(const CarFiles &car, QString *error);

    /**
     * @param id  with DbcMessage::extendedFlag for one of 29 bits
     * @return the quantities that a frame tells; valid until the next call
     */
    const QVector<Sample> &decode(qint64 ms, quint32 id, const QByteArray &data);
    /** The quantities that no longer come, each once, as samples that are no number. */
    const QVector<Sample> &missing(qint64 ms);
    /** As in FrameDecoder. */
    qint64 nextExpectedMs() const { return m_decoder.nextExpectedMs(); }

    /** As in FrameDecoder. */
    void reset() { m_decoder.reset(); }

    /** By quantity, whether the map and the DBC file have it. */
    QVector<bool> present() const;
    /** How many frames the DBC file knows. */
    int knownFrames() const { return m_knownFrames; }
    /** Values that are no numbers. */
    int droppedValues() const { return m_droppedValues; }
    /** What is missing or ambiguous in the files, one line each. */
    const QStringList &remarks() const { return m_remarks; }

private:
    BusDecoder(Dbc dbc, const SignalMap &map, const SignalBinding &binding);

    const QVector<Sample> &samplesOf(qint64 ms, const QVector<PathValue> &values);

    Dbc m_dbc;
    FrameDecoder m_decoder;
    QVector<Quantity> m_quantities; // by the map's entry
    QStringList m_remarks;
    QVector<Sample> m_samples;
    int m_knownFrames = 0;
    int m_droppedValues = 0;
};

} // namespace module
