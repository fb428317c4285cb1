#include "report/reportpage.h"

#include "report/axis.h"

#include <QBuffer>
#include <QCryptographicHash>
#include <QDateTime>
#include <QFile>
#include <QImage>

static QByteArray resource(const QString &name)
{
    QFile file(QStringLiteral(":/report/") + name);
    const bool isOpen = file.open(QIODevice::ReadOnly);
    Q_ASSERT(isOpen);
    return isOpen ? file.readAll() : QByteArray();
}

/** What a drive or a scenario wrote into the page cannot run, load or send anything. */
static QString policyFor(const QByteArray &script)
{
    const QByteArray hash = QCryptographicHash::hash(script, QCryptographicHash::Sha256);
    return QStringLiteral("default-src 'none'; img-src data:; style-src 'unsafe-inline'; "
                          "script-src 'sha256-%1'")
        .arg(QString::fromLatin1(hash.toBase64()));
}

QByteArray reportPage(const QString &title, const std::function<void(Html *html)> &writeBody)
{
    const QByteArray script = resource(QStringLiteral("report.js"));
    Html html;
    html.verbatim("<!DOCTYPE html>\n").begin("html", {{"lang", "en"}}).begin("head");
    html.single("meta", {{"charset", "utf-8"}});
    html.single("meta",
                {{"http-equiv", "Content-Security-Policy"}, {"content", policyFor(script)}});
    html.single("meta", {{"name", "viewport"}, {"content", "width=device-width, initial-scale=1"}});
    html.element("title", title);
    html.begin("style").verbatim(resource(QStringLiteral("report.css"))).end().end();
    html.begin("body");
    writeBody(&html);
    html.begin("script").verbatim(script).end().end().end();
    return html.page();
}

void writeBadge(Html *html, const char *tag, Badge badge, const QString &text)
{
    static constexpr const char *classes[] = {"badge", "badge good", "badge bad"};
    html->element(tag, text, {{"class", QLatin1String(classes[int(badge)])}});
}

void beginFold(Html *html, const char *headingTag, const QString &heading, Badge badge,
               const QString &badgeText, bool isOpen)
{
    Html::Attributes attributes = {{"class", "panel"}};
    if (isOpen)
        attributes.append(Html::Attribute{"open", {}});
    html->begin("details", attributes).begin("summary").element(headingTag, heading);
    writeBadge(html, "span", badge, badgeText);
    html->end();
}

QString momentText(qint64 ms, double step)
{
    return timeTickText(double(ms) / 1000, step);
}

QString madeBy()
{
    return QStringLiteral("norda-bench " NORDA_VERSION ", %1")
        .arg(QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm")));
}

void writeMoment(Html *html, qint64 ms, double step)
{
    html->element("a", momentText(ms, step),
                  {{"href", QStringLiteral("#t=%1").arg(double(ms) / 1000, 0, 'f', 3)}});
}

void writePicture(Html *html, const ReportPicture &picture)
{
    const QString data =
        QStringLiteral("data:image/png;base64,") + QString::fromLatin1(picture.png.toBase64());
    html->begin("figure", {{"class", "shot"}});
    html->single("img", {{"src", data}, {"alt", picture.caption}, {"decoding", "async"}});
    html->begin("figcaption");
    if (picture.ms >= 0) {
        writeMoment(html, picture.ms, 0.1);
        html->text(QStringLiteral(" "));
    }
    html->text(picture.caption).end().end();
}

QByteArray pictureForReport(const QImage &screen)
{
    static constexpr QSize size(640, 360);
    QByteArray png;
    QBuffer buffer(&png);
    screen.scaled(size, Qt::KeepAspectRatio, Qt::SmoothTransformation).save(&buffer, "PNG");
    return png;
}
