#include "results.h"

#include "options.h"
#include "outputfile.h"
#include "report/drivecollector.h"
#include "session/rig.h"
#include "tools/gallery.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <cstdio>

static void printSummary(const QJsonObject &summary)
{
    std::printf("%.1f s simulated in %.1f s: %d signals, %d calls, %d frames, %d warnings\n",
                summary.value("driveSeconds").toDouble(), summary.value("wallSeconds").toDouble(),
                summary.value("signalsTotal").toInt(), summary.value("callsTotal").toInt(),
                summary.value("framesPainted").toInt(), summary.value("warnings").toInt());
}

bool writeSummary(const QString &path, const QJsonObject &summary, const output::InputFiles &inputs,
                  QString *error)
{
    return output::writeResult(path, QJsonDocument(summary).toJson(), inputs, error);
}

static bool printed(const QString &error)
{
    if (!error.isEmpty())
        std::fprintf(stderr, "%s\n", qPrintable(error));
    return error.isEmpty();
}

static bool writePictures(const Options &options, Rig *rig)
{
    QString error;
    const QStringList files = writeGallery(options.gallery, rig, options.filesInUse(), &error);
    std::printf("%d pictures in %s\n", files.size(), qPrintable(options.gallery));
    return printed(error);
}

static bool writeReport(const Options &options, Rig *rig, const PictureTrail &trail)
{
    QString error;
    output::writeResult(options.reportFile(), pageOf(reportOn(rig, trail)), options.setup.inputs,
                        &error);
    return printed(error);
}

bool writeResults(const Options &options, Rig *rig, const PictureTrail *trail)
{
    Session *session = rig->session();
    session->finish();
    bool isComplete = !session->hasRecordingFailed();
    const QJsonObject summary = session->summary(rig->unit()->screen()->framesPainted());
    printSummary(summary);
    QString error;
    if (!options.summary.isEmpty()) {
        writeSummary(options.summary, summary, options.setup.inputs, &error);
        isComplete = printed(error) && isComplete;
    }
    if (!options.report.isEmpty()) // before the gallery, which changes what is on the screen
        isComplete = writeReport(options, rig, *trail) && isComplete;
    if (!options.gallery.isEmpty())
        isComplete = writePictures(options, rig) && isComplete;
    return isComplete;
}
