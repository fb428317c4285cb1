#include "hostactions.h"

#include "svaudio/audioservice.h"

#include <QCoreApplication>

namespace norda {

void clickBeep()
{
    svaudio::AudioService::instance()->doBeep(0);
}

void navigateTo(Qx::Touch destination)
{
    QCoreApplication::postEvent(QCoreApplication::instance(), new TouchEvent(destination, -1, -1));
}

} // namespace norda
