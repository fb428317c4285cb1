#pragma once

#include "live/obdlink.h"

#include <optional>

namespace module {

/** A line of an adapter. */
struct ElmLine
{
    enum Kind {
        Frame,     ///< of a CAN bus
        OldFrame,  ///< of an older bus: three bytes of header, data, checksum
        Ok,        ///< a command was accepted
        Refused,   ///< a command was not understood
        Failure,   ///< of the request, or the bus
        Restarted, ///< the adapter has lost its settings
        Text       ///< anything else
    };

    Kind kind = Text;
    CanFrame frame;                            ///< when Frame or OldFrame
    ObdFailure failure = ObdFailure::NoAnswer; ///< when Failure
    QString text;                              ///< the line, or what a failure means, printable
};

/**
 * Understands a line. The adapter may write spaces or none, and put words such as "SEARCHING..."
 * in front of a frame.
 * @return nothing for a line without content
 */
std::optional<ElmLine> parseElmLine(const QByteArray &line);

/** Whether a line repeats a command. */
bool isElmEcho(const QByteArray &line, const QByteArray &command);

/** What the lines of a reply tell. */
struct ElmAnswers
{
    QVector<ObdAnswer> answers;
    QVector<CanFrame> frames; ///< of the units, whether they make an answer or not
    QString error;            ///< of the last message that could not be put together
};

/** The answers to a request. The adapter has sent the flow control for those of several frames. */
ElmAnswers elmAnswers(const QByteArray &request, const QVector<ElmLine> &lines);

/** Collects what an adapter sends until it asks for the next command with a prompt. */
class ElmReader
{
public:
    /** More than the longest message takes. Of what comes without a prompt, this much is kept. */
    static constexpr int LongestReply = 16 * 1024;

    void add(const QByteArray &bytes);
    /** Whether a whole reply has come. */
    bool hasReply() const;
    /** Whether more has come than a reply can have. */
    bool isOverfull() const { return m_bytes.size() >= LongestReply; }
    /** The lines of the next reply, which is taken once. */
    QList<QByteArray> takeReply();
    /** What came without a prompt so far. */
    QByteArray pending() const { return m_bytes; }
    void clear() { m_bytes.clear(); }

private:
    QByteArray m_bytes;
};

} // namespace module
