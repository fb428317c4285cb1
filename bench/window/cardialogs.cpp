#include "window/cardialogs.h"

#include "endsignals.h"
#include "live/liveports.h"
#include "session/rig.h"
#include "window/benchsettings.h"

#include <QApplication>
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>

static const QString key = QStringLiteral("connection");

static QString title()
{
    return QCoreApplication::translate("CarDialogs", "Connect to a car");
}

QString askForCar(QWidget *window)
{
    QStringList names = module::livePorts();
    const QString latest = BenchSettings().value(key).toString();
    if (!latest.isEmpty()) {
        names.removeAll(latest);
        names.prepend(latest);
    }
    const QString forms = QCoreApplication::translate(
        "CarDialogs", "A CAN bus or an ELM327 adapter, as can:PLUGIN:INTERFACE[?bitrate=N],\n"
                      "elm327:DEVICE[@BAUD] or elm327:tcp:HOST:PORT:");
    bool isChosen = false;
    QString name =
        QInputDialog::getItem(window, title(), forms, names, 0, true, &isChosen).trimmed();
    if (!isChosen || name.isEmpty())
        return {};
    BenchSettings().setValue(key, name);
    return name;
}

bool isTriedAgain(QWidget *window, const QString &error)
{
    QMessageBox box(QMessageBox::Warning, title(), error, QMessageBox::Cancel, window);
    auto *again = box.addButton(QCoreApplication::translate("CarDialogs", "&Try again"),
                                QMessageBox::AcceptRole);
    box.setDefaultButton(again);
    box.exec();
    return box.clickedButton() == again;
}

bool openFirst(Rig *rig, QString *error)
{
    const bool isCar = module::isLiveName(rig->setup().source);
    const EndRequest endRequest;
    QObject::connect(&endRequest, &EndRequest::requested, qApp, [] {
        if (QWidget *message = QApplication::activeModalWidget())
            message->close();
    });
    while (!rig->openSource(error)) {
        if (!isCar || endsignals::isRequested() || !isTriedAgain(nullptr, *error))
            return false;
        error->clear();
    }
    return true;
}
