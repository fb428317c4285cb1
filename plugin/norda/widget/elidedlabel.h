#pragma once

#include <QLabel>

namespace norda {

/** A label that ends a text wider than itself with an ellipsis; `text()` stays whole. */
class ElidedLabel : public QLabel
{
    Q_OBJECT
public:
    explicit ElidedLabel(QWidget *parent = nullptr);
    ~ElidedLabel() override;

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace norda
