#pragma once

#include <QTreeWidget>

class CurveList;

/** The curves with their colours and their values at a moment. The cross removes one. */
class CurveLegend : public QTreeWidget
{
    Q_OBJECT
public:
    enum Column { Name, Value, Remove, ColumnCount };

    explicit CurveLegend(CurveList *curves, QWidget *parent = nullptr);

    /** Shows the values that hold at a moment. */
    void showMoment(qint64 ms);

    QSize sizeHint() const override;

private:
    void rebuild();
    void removeRow(QTreeWidgetItem *row);

    CurveList *m_curves;
};
