#pragma once

#include "live/canframe.h"

#include <QObject>
#include <QString>
#include <QVector>

namespace module {

/** What is asked of a car's control units. */
struct ObdRequest
{
    QByteArray message; ///< from the service on
    quint32 ecu = 0;    ///< the identifier that it answers with; 0 asks all of them
    int answers = 0;    ///< how many units answer a request to all, 0 where that is not known
};

/** What a control unit answers. */
struct ObdAnswer
{
    quint32 ecu = 0;    ///< the identifier of its answers, or its address on an older bus
    QByteArray message; ///< from the service on; it may be a refusal (7F)
};

/** Why there is no answer. */
enum class ObdFailure {
    NoAnswer, ///< the car is silent
    NoBus,    ///< the bus itself cannot be used
    Damaged,  ///< an answer came and could not be read
};

/** What becomes of a link and its requests. */
struct ObdEvent
{
    enum Kind { Ready, Answered, Failed, Lost, OtherTester };

    Kind kind = Ready;
    QVector<ObdAnswer> answers;                ///< when Answered
    ObdFailure failure = ObdFailure::NoAnswer; ///< when Failed
    QString text;                              ///< when Failed or Lost: why, in one line
};

/** The identifiers of diagnosis on a CAN bus, by ISO 15765-4. */
bool isObdRequest(const CanFrame &frame);
bool isObdAnswer(const CanFrame &frame);

/** A way to ask a car. One request is outstanding at a time. */
class ObdLink : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

    /** Begins to connect; ready() or lost() follow. Also after lost(). */
    virtual void open() = 0;
    /** Frees the bus or the port and drops what was asked; nothing is reported. */
    virtual void close() = 0;
    /** Asks; answered() or failed() follow, or lost(). Only while it is ready. */
    virtual void ask(const ObdRequest &request) = 0;
    /** Whether it also reports what others send on the bus. */
    virtual bool isListening() const = 0;
    /** Of the bus, in bits a second; 0 where it is not known. */
    virtual int bitrate() const { return 0; }
    /** What it is connected to, for a person. */
    virtual QString description() const = 0;

signals:
    void ready();
    void answered(const QVector<module::ObdAnswer> &answers);
    void failed(module::ObdFailure failure, const QString &why);
    void lost(const QString &why);
    /** Another device asks the car too. */
    void otherTesterSeen();
    /** A frame of the bus, as far as the link knows it. @param isSent  by this link */
    void frameSeen(const module::CanFrame &frame, bool isSent);

protected:
    /** Emits the signal of an event. */
    void report(const ObdEvent &event);
};

} // namespace module
