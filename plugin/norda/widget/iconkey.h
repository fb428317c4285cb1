#pragma once

#include <QPushButton>

namespace norda {

/**
 * A key that is nothing but its image: the pressed one while it is checked or held down. A style
 * sheet that draws no frame looks the same, but costs more than the image itself.
 */
class IconKey : public QPushButton
{
    Q_OBJECT
public:
    explicit IconKey(QWidget *parent = nullptr);
    ~IconKey() override;

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace norda
