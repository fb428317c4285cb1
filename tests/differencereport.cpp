#include "differencereport.h"

#include "outputfile.h"
#include "picturecomparison.h"
#include "report/reportpage.h"

#include <QBuffer>

struct Shot
{
    const char *kind;
    QImage picture;
};

static QVector<Shot> shotsOf(const PictureFailure &failure)
{
    if (failure.expected.isNull())
        return {{"new", failure.seen}};
    return {{"reference", failure.expected},
            {"new", failure.seen},
            {"difference", differencePicture(failure.expected, failure.seen)}};
}

static QByteArray png(const QImage &picture)
{
    QByteArray content;
    QBuffer buffer(&content);
    picture.save(&buffer, "PNG");
    return content;
}

/** The pictures are in the page, and beside it for those who want to open one. */
static bool writeFailure(Html *html, const QDir &folder, const PictureFailure &failure,
                         QString *error)
{
    beginFold(html, "h3", failure.name, Badge::Bad, failure.text, true);
    html->begin("div", {{"class", "pair"}});
    for (const auto &[kind, picture] : shotsOf(failure)) {
        const QString file = QStringLiteral("%1-%2.png").arg(failure.name, QLatin1String(kind));
        const QByteArray content = png(picture);
        if (!output::writeResult(folder.filePath(file), content, {}, error))
            return false;
        html->begin("div");
        writePicture(html, {content, QLatin1String(kind)});
        html->element("a", file, {{"href", file}}).end();
    }
    html->end().end();
    return true;
}

bool writeDifferences(const QDir &folder, const QVector<PictureFailure> &failures, QString *error)
{
    bool isWritten = folder.mkpath(QStringLiteral("."));
    const QString title = QStringLiteral("%1 pictures differ").arg(failures.size());
    const QByteArray page = reportPage(title, [&](Html *html) {
        html->element("h1", title);
        html->element("p", madeBy(), {{"class", "secondary"}});
        for (const PictureFailure &failure : failures)
            isWritten = isWritten && writeFailure(html, folder, failure, error);
    });
    return isWritten &&
           output::writeResult(folder.filePath(QStringLiteral("report.html")), page, {}, error);
}
