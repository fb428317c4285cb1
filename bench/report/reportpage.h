#pragma once

#include "report/html.h"

#include <functional>

class QImage;

/** A picture as PNG, and what it shows. */
struct ReportPicture
{
    QByteArray png;
    QString caption;
    qint64 ms = -1; ///< of the session; -1 for no moment of the curves
};

enum class Badge { Plain, Good, Bad };

/**
 * A page that needs no other file and no network, and whose browser refuses both: pictures, style
 * and script are in it.
 */
QByteArray reportPage(const QString &title, const std::function<void(Html *html)> &writeBody);

// Parts of such a page.

void writeBadge(Html *html, const char *tag, Badge badge, const QString &text);
/** Begins a panel that can be closed, with a heading and a badge that stay visible. */
void beginFold(Html *html, const char *headingTag, const QString &heading, Badge badge,
               const QString &badgeText, bool isOpen);
/** A moment as minutes and seconds, which leads to that moment of the curves. */
void writeMoment(Html *html, qint64 ms, double step = 0.001);
void writePicture(Html *html, const ReportPicture &picture);
/** @param step  seconds between moments that differ */
QString momentText(qint64 ms, double step = 0.001);
/** The program and the present time. */
QString madeBy();

/** A screen as a picture for a page, smaller than it is. */
QByteArray pictureForReport(const QImage &screen);
