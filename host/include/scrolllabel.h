#pragma once

#include "nordahost_global.h"

#include <QLabel>

/**
 * A one-line label that can scroll a text wider than itself. By itself it does not move and shows
 * the start of the text; an `SLabelManager` moves it.
 */
class NORDAHOST_EXPORT ScrollLabel : public QLabel
{
    Q_OBJECT
    /** How far the text is shifted to the left, in pixels. */
    Q_PROPERTY(int scrollOffset READ scrollOffset WRITE setScrollOffset)
public:
    /** @param parent  the screen that holds the label */
    explicit ScrollLabel(QWidget *parent = nullptr);
    ~ScrollLabel() override;

    /** 0 for a text that has not been scrolled yet: a new text starts at its beginning. */
    int scrollOffset() const;
    /** @param pixels  bounded to 0 and `overflow()` */
    void setScrollOffset(int pixels);

    /** How many pixels of the text do not fit; 0 when all of it shows. */
    int overflow() const;

protected:
    /** Draws the text from its offset on. */
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_scrolledText;
    int m_offset = 0;
};
