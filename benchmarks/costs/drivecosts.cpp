#include "costruns.h"
#include "meter.h"

#include "session/rig.h"

#include <QEventLoop>

void measureDrive()
{
    Setup setup;
    setup.speed = 0;
    setup.durationMs = 10 * 60 * 1000;
    Rig rig(setup);
    QString error;
    if (!rig.open(QStringLiteral(NORDA_PLUGIN_FILE), &error))
        qFatal("%s", qPrintable(error));
    rig.unit()->screen()->show();
    rig.begin(Replay::Beginning);
    measure("Drive: ten minutes of the simulated car", [&rig] {
        QEventLoop loop;
        QObject::connect(rig.session()->drive(), &module::Drive::finished, &loop,
                         &QEventLoop::quit);
        rig.session()->drive()->play();
        loop.exec();
    });
}
