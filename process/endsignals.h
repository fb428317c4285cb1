#pragma once

#include <QObject>

/**
 * Turns INT, TERM and HUP into an orderly end. The first is a request; a second one ends the
 * process at once, as without this. A pipe that nobody reads any more does not end it.
 */
namespace endsignals {

/** From now on. HUP stays ignored where it is, as under nohup. */
void install();
/** As before install(), for a child process. */
void restore();
bool isRequested();
/** Readable once the end is requested; -1 for none. */
int descriptor();

} // namespace endsignals

/** Emits the request for an orderly end to an event loop. */
class EndRequest : public QObject
{
    Q_OBJECT
public:
    explicit EndRequest(QObject *parent = nullptr);
    ~EndRequest() override;

signals:
    void requested();
};
