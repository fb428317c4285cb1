#pragma once

#include <QImage>
#include <QRect>

/** Where two pictures differ by more than processors that round differently. */
struct PictureDifference
{
    int pixels = 0;
    QRect area; ///< around them

    bool isSame() const;
    /** In words, for a person. */
    QString text() const;
};

/** Pictures of different sizes differ in every pixel. */
PictureDifference compare(const QImage &expected, const QImage &seen);

/** What is seen, in dim grey, with the differences in red and a frame around them. */
QImage differencePicture(const QImage &expected, const QImage &seen);
