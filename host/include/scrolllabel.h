#pragma once

#include "nordahost_global.h"

#include <QLabel>

/**
 * A one-line label that can scroll a text wider than itself. By itself it stands still and shows
 * the start of the text; an `SLabelManager` moves it.
 */
class NORDAHOST_EXPORT ScrollLabel : public QLabel
{
    Q_OBJECT
    /** How far the text is shifted to the left, in pixels. */
    Q_PROPERTY(int scrollOffset READ scrollOffset WRITE setScrollOffset)
public:
    explicit ScrollLabel(QWidget *parent = nullptr);
    ~ScrollLabel() override;

    int scrollOffset() const { return m_offset; }
    void setScrollOffset(int pixels);

    /** How many pixels of the text do not fit; 0 when all of it shows. */
    int overflow() const;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    int m_offset = 0;
};
