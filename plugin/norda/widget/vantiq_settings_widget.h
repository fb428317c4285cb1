#pragma once

#include "barscreen.h"
#include "norda/modulecodes.h"

#include <QList>
#include <QMap>
#include <QStringList>

#include <memory>

class QLabel;
class QVBoxLayout;
class Ui_norda_vantiq_settings;

namespace mem {
class SettingsExe;
}

namespace norda {

/**
 * The screen of the vehicle module's configuration menu, which the module sends line by line: a
 * title and up to 15 rows, into fixed row widgets. A touched row goes back as its line number, and
 * the module answers with the next page. The screen leaves the host's status bar alone.
 */
class Vantiq_Settings_Widget : public BarScreen
{
    Q_OBJECT
public:
    explicit Vantiq_Settings_Widget(QWidget *parent = nullptr);
    ~Vantiq_Settings_Widget() override;

    /**
     * What a title, an item text and a value text make of a page.
     * @return 1 a page with items, 2 a page with values, 3 values without a page, -1 nothing yet
     */
    static int GetCurrentType(const QStringList &lines);

public slots:
    /** @param info  line type (1 title, 2 and 3 items), a number without use, line number from 1 */
    void UpdateConfigMenuText(const QList<int> &info, const QStringList &label,
                              const QStringList &value);

protected:
    void showEvent(QShowEvent *event) override;

private:
    void init();
    void onBackClicked();
    /** The row's line goes to the module. @param row  from 1 */
    void SettingBtnClicked(int row);

    QWidget *showLine(MenuLine kind, int line, const QString &label, const QString &value);
    void showTitle(const QString &text);
    QWidget *showItem(int line, const QString &text, QString *stored);
    void keepRow(int line, const QString &label, const QString &value);
    void layOutPage();
    void addWidgetsToQVBoxLayout(QWidget *row);
    void clearQVBoxLayout(QVBoxLayout *layout);
    void UpdateWidgetLabel(QWidget *row, const QString &text);

    void emptyTexts();
    void forgetRows();
    void scrollToTop();
    QStringList currentLines() const;

    using RowTexts = QMap<QString, QString>;

    const std::unique_ptr<Ui_norda_vantiq_settings> m_form;
    mem::SettingsExe *m_settingsExe;
    QMap<int, QWidget *> m_lineWidgets; // by line number
    QList<QLabel *> m_rowLabels;        // by row
    QString m_titleText;
    QString m_itemText2;
    QString m_itemText3;
    RowTexts m_rowTexts;
    QMap<int, RowTexts> m_pageRows; // by line number, so that rows lie in their order
};

} // namespace norda
