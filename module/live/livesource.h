#pragma once

#include "busdecoder.h"
#include "live/canlog.h"
#include "live/livevalues.h"
#include "live/obdpoller.h"
#include "pagemapper.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <memory>

namespace module {

/**
 * A car that is connected now. What it sends and what it answers becomes the pages' signals as it
 * comes, also while nobody takes them. A link that is lost is opened again and again.
 */
class LiveSource : public QObject, public VehicleSource
{
    Q_OBJECT
public:
    /** @param decoder  explains the car's own frames; may be null */
    LiveSource(const QString &name, std::unique_ptr<ObdLink> link, const LiveSettings &settings,
               std::unique_ptr<BusDecoder> decoder);
    ~LiveSource() override;

    /**
     * Connects for the first time, and waits for it unless the car may come later; events are
     * handled meanwhile.
     * @param error  one line that names the source
     */
    bool connectToCar(QString *error);

    QString title() const override { return m_name; }
    qint64 durationMs() const override { return -1; }
    qint64 liveMs() const override { return m_clock.elapsed(); }
    void setWakeUp(const std::function<void()> &wakeUp) override { m_wakeUp = wakeUp; }
    void setReleased(bool isReleased) override;
    qint64 nextDueMs() const override;
    Emission take() override;
    void seek(qint64 ms) override;
    QStringList findings() const override;
    QVector<Findings> findingsByPage() const override;
    QJsonObject statistics() const override;

private:
    /** What was counted, and how much of it in the last whole second. */
    struct Counter
    {
        qint64 total = 0;
        qint64 before = 0; // a second ago
        qint64 rate = 0;

        void endSecond();
    };

    bool waitForCar(QString *error);
    void onReady();
    void onLost(const QString &why);
    void noteLoss(const QString &why);
    void onAnswered(const QVector<ObdAnswer> &answers);
    void onFailed(ObdFailure failure, const QString &why);
    void onOtherTester();
    void onFrame(const CanFrame &frame, bool isSent);
    void readFrame(const CanFrame &frame);
    void readForeignAnswer(const CanFrame &frame);
    void watch();
    void countSecond();
    void ask();
    void schedulePoll();
    void add(const QVector<Sample> &samples, bool isWatched);
    void forget(bool onlyWatched);
    void choosePages();
    void showNotice(const QString &text);
    QVector<Emission> noticeTexts() const;
    void append(QVector<Emission> emissions);
    QStringList connectionFindings() const;
    QString busText() const;
    QString whyMissing() const;
    QString valueText(Quantity quantity) const;

    QString m_name;
    std::unique_ptr<ObdLink> m_link;
    std::unique_ptr<BusDecoder> m_decoder;
    std::unique_ptr<CanLog> m_log;
    ObdPoller m_poller;
    LiveValues m_values;
    QVector<bool> m_present; // by quantity
    PageMapper m_mapper;
    QVector<Emission> m_pending; // in order
    std::function<void()> m_wakeUp;
    qint64 m_startUs; // since 1970; from there on no step of that clock counts
    QElapsedTimer m_clock;
    QTimer m_watchTimer;
    QTimer m_pollTimer;
    QTimer m_reconnectTimer;
    bool m_isConnected = false;
    bool m_reconnects; // when the link is lost
    QString m_lossReason;
    QString m_notice; // in the pages' top bars
    QStringList m_codes;
    qint64 m_countedMs = 0;
    Counter m_frames;
    Counter m_bits; // of these frames
    Counter m_requests;
    Counter m_answers;
    int m_losses = 0;
};

} // namespace module
