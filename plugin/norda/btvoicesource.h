#pragma once

#include "iaudiofocuschangelistener.h"
#include "sourceinterface.h"

#include <QObject>

namespace norda {

/**
 * One kind of the vehicle module's voice (information, recognition, warning tone) as an audio
 * source of the head unit. Which interruption plays is a state of the whole process, kept in the
 * host's settings cache.
 */
class BTVoiceSource : public QObject, public SourceInterface, public IAudioFocusChangeListener
{
    Q_OBJECT
    Q_INTERFACES(SourceInterface)
public:
    /** @param type  0 information, 1 recognition, 2 warning tone; any other is taken for 0 */
    BTVoiceSource(int type, QObject *parent);
    ~BTVoiceSource() override;

    QString name() const override;
    void start(const QByteArray &argument) override;
    void stop(const QByteArray &argument) override;
    int keyEvent(KeyEvent *event) override;
    int attribute() override;

    void onAudioFocusChange(int change) override;
    QString clientId() const override;

public slots:
    /** A notice of the module. @param kind  0 over, 2 to 4 begins  @param location  speaker bits */
    void handingVTQAudioInterrupt(uchar kind, uchar audioInterruptLocation);
    /** The host's delay after an interruption is over: all speakers play again. */
    void onDelayRestoreMixTimeOut();

private:
    void playVtqVoice();
    void stopVtqVoice();
    void onVtqToMcuCmd(uchar location);
    void onANDsoundLocation(int bit);

    const int m_type;
};

} // namespace norda
