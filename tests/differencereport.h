#pragma once

#include <QDir>
#include <QImage>
#include <QVector>

/** A picture that is not as expected, and why. */
struct PictureFailure
{
    QString name;
    QString text;
    QImage expected; ///< null where there is none
    QImage seen;
};

/** Writes expected picture, new one and difference of each, and a page of them, report.html. */
bool writeDifferences(const QDir &folder, const QVector<PictureFailure> &failures, QString *error);
