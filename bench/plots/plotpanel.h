#pragma once

#include "panels/panel.h"

class CurveLegend;
class CurveList;
class PlotArea;
class QBoxLayout;
class QLineEdit;
class QStringListModel;
class Rewind;
class TimeRange;

/** Plots of what the signals carry, over session time. */
class PlotPanel : public Panel
{
    Q_OBJECT
public:
    PlotPanel(Rewind *rewind, TimeRange *range, QWidget *parent = nullptr);
    ~PlotPanel() override;

    /** The type of a dragged signal: its name in UTF-8. */
    static constexpr char signalMimeType[] = "application/x-norda-signal";

    void setSession(Session *session) override;
    const CurveList *curves() const { return m_curves; }
    /** Adds the curve of a name, or all of a signal. @return whether there was one to add */
    bool add(const QString &name);
    /** What the curves hold, as CSV. @param error  one line that names the file */
    bool writeCsv(const QString &file, QString *error);
    /** The plots as they look. @param error  one line that names the file */
    bool writePlot(const QString &file, QString *error);

protected:
    void refresh() override;
    void resizeEvent(QResizeEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    using Writer = bool (PlotPanel::*)(const QString &file, QString *error);

    QWidget *makeBar();
    void addSearched();
    void offerCurves();
    void redraw();
    void onCurves();
    void showMoment();
    qint64 legendMs() const;
    void chooseFile(const QString &title, const QString &name, const QString &filter, Writer write);

    Rewind *m_rewind;
    TimeRange *m_range;
    CurveList *m_curves;
    PlotArea *m_area;
    CurveLegend *m_legend;
    QLineEdit *m_search;
    QStringListModel *m_offered;
    QBoxLayout *m_sides; // the plots and the legend
};
