#pragma once

#include <QSlider>

/** The seek bar: a click goes to its place. It marks the part that is repeated. */
class SeekSlider : public QSlider
{
    Q_OBJECT
public:
    explicit SeekSlider(QWidget *parent = nullptr);

    /** The repeated part, from and to a value; -1 for an end that is not set. */
    void setPart(int from, int to);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QRect groove() const;
    int xOf(int value) const;

    int m_from = -1;
    int m_to = -1;
};
