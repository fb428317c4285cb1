#pragma once

#include <QWidget>

/** A frame over a widget of the screen, which takes no touches. */
class WidgetFrame : public QWidget
{
    Q_OBJECT
public:
    explicit WidgetFrame(QWidget *screen);
    ~WidgetFrame() override;

    /** Null for none; a widget that cannot be seen has none either. */
    void surround(const QWidget *widget);

protected:
    void paintEvent(QPaintEvent *event) override;
};
