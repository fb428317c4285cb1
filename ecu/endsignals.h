#pragma once

#include <QObject>

namespace ecu {

/**
 * Turns INT, TERM and HUP into an orderly end of the application; a second one ends it at once. HUP
 * stays ignored where it is.
 */
class EndSignals : public QObject
{
    Q_OBJECT
public:
    /** Before any thread is started. */
    explicit EndSignals(QObject *parent = nullptr);
    ~EndSignals() override;

private:
    int m_descriptor = -1;
};

} // namespace ecu
