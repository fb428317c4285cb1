#pragma once

#include <QBuffer>
#include <QObject>

#include <memory>

class QAudioOutput;

/** Sounds the touch click where the machine has a sound output; silent elsewhere. */
class Beeper : public QObject
{
    Q_OBJECT
public:
    explicit Beeper(QObject *parent = nullptr);
    ~Beeper() override;

private:
    void open();
    void beep();

    QByteArray m_click;
    QBuffer m_buffer;
    std::unique_ptr<QAudioOutput> m_output;
    bool m_opened = false;
};
