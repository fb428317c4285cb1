// Writes a picture of each page of the popup dialog, which no window serves, into a folder.

#include "norda/vant_popup.h"
#include "nordahost.h"
#include "runtimefolder.h"

#include <QApplication>
#include <QDir>
#include <QLoggingCategory>

#include <cstdio>

static constexpr const char *pages[] = {"main",  "capacity", "reset",  "voltage",
                                        "front", "rear",     "service"};

int main(int argc, char *argv[])
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    ensureRuntimeFolder();
    QApplication application(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() != 2 || !QDir().mkpath(arguments[1])) {
        std::fprintf(stderr, "usage: norda-popup-pictures FOLDER (one that can be written)\n");
        return 2;
    }
    nordaHostObject("CallLog"); // the host brings the images
    vant_popup popup;
    for (int type = 0; type < int(std::size(pages)); ++type) {
        popup.setPopType(type);
        const QString file =
            QDir(arguments[1])
                .filePath(QStringLiteral("popup-%1.png").arg(QLatin1String(pages[type])));
        if (!popup.grab().save(file)) {
            std::fprintf(stderr, "%s: expected a picture file that can be written\n",
                         qPrintable(file));
            return 2;
        }
    }
    return 0;
}
