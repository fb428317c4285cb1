#pragma once

#include "ports/lineport.h"

#include <QSocketNotifier>

#include <memory>

namespace ecu {

/** A pseudo terminal, which a client opens as the device of an adapter. */
class PtyPort : public LinePort
{
    Q_OBJECT
public:
    /** @param link  a symbolic link that leads to the terminal; empty for none */
    explicit PtyPort(const QString &link, QObject *parent = nullptr);
    ~PtyPort() override;

    bool open(QString *error) override;
    void close() override;
    QString name() const override { return m_link.isEmpty() ? m_terminal : m_link; }
    void write(const QByteArray &characters) override;

private:
    bool openTerminal();
    bool makeLink(QString *error);
    void read();

    QString m_link;
    QString m_terminal;
    int m_own = -1;    // our end
    int m_client = -1; // the client's end, held open so that clients can come and go
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace ecu
