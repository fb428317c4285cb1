#pragma once

#include "iconkey.h"

namespace norda {

/** A key whose image is lit from behind while it is held down; the pressed image is for a checked
 * one. */
class LitKey : public IconKey
{
    Q_OBJECT
    /** The radius of the light's corners, in pixels. */
    Q_PROPERTY(int cornerRadius MEMBER m_cornerRadius)
public:
    explicit LitKey(QWidget *parent = nullptr);
    ~LitKey() override;

    void setCornerRadius(int pixels) { m_cornerRadius = pixels; }
    /** The image's: no text to measure. */
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    int m_cornerRadius = 0;
};

} // namespace norda
