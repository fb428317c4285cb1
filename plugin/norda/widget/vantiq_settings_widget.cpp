#include "vantiq_settings_widget.h"

#include "cm/scrollmanage.h"
#include "debug.h"
#include "mem/settingsexe.h"
#include "norda/modulecodes.h"
#include "ui_norda_vantiq_settings.h"

#include <QScrollBar>
#include <QThread>

namespace norda {

using Screen = Vantiq_Settings_Widget;

static constexpr int rowCount = 15;
static constexpr int rowHeight = 93;
static constexpr int bottomSpace = 50;

// The module sends its lines in bursts; the pause after each paces them.
static constexpr unsigned long linePauseMs = 10;
static constexpr unsigned long backPauseMs = 5;

enum PageType { NoPage = -1, PageWithItems = 1, PageWithValues = 2, ValuesAlone = 3 };

static constexpr int firstRowLine = 2; // line 1 is the title

static int lineOfRow(int row)
{
    return row - 1 + firstRowLine;
}

Vantiq_Settings_Widget::Vantiq_Settings_Widget(QWidget *parent)
    : BarScreen(BarPage::Settings, parent), m_form(std::make_unique<Ui_norda_vantiq_settings>())
{
    m_form->setupUi(this);
    m_settingsExe = new mem::SettingsExe(this);
    new cm::ScrollManage(m_form->scrollArea_item_01, 1, 0);
    init();
    connect(m_form->key_back, &QPushButton::clicked, this, &Screen::onBackClicked);
    receive(&VtqAdaptor::NordaConfigMenuTextInfo, &Screen::UpdateConfigMenuText);
}

Vantiq_Settings_Widget::~Vantiq_Settings_Widget() = default;

void Vantiq_Settings_Widget::init()
{
    createNavigationBar();
    m_form->stackedWidget->setCurrentIndex(0);
    m_form->icon_back->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_form->Txt_back->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_form->verticalLayout->setAlignment(Qt::AlignTop);
    // A list that grows keeps what is on the screen: only the new row is painted.
    m_form->scrollAreaWidgetContents->setAttribute(Qt::WA_StaticContents);
    for (int row = 1; row <= rowCount; ++row) {
        m_lineWidgets.insert(lineOfRow(row),
                             findChild<QWidget *>(QStringLiteral("item_bar_widget_%1").arg(row)));
        auto *label = findChild<QLabel *>(QStringLiteral("Txt_item_%1").arg(row));
        label->setTextFormat(Qt::PlainText);
        m_rowLabels.append(label);
        auto *key = findChild<QPushButton *>(QStringLiteral("key_item_%1").arg(row));
        connect(key, &QPushButton::clicked, this, [this, row] { SettingBtnClicked(row); });
    }
    m_form->Txt_pop_title->setTextFormat(Qt::PlainText);
    clearQVBoxLayout(m_form->verticalLayout);
}

void Vantiq_Settings_Widget::showEvent(QShowEvent *event)
{
    BarScreen::showEvent(event);
    scrollToTop();
    forgetRows();
}

int Vantiq_Settings_Widget::GetCurrentType(const QStringList &lines)
{
    const bool hasTitle = !lines.value(0).isEmpty();
    const bool hasItem = !lines.value(1).isEmpty();
    const bool hasValue = !lines.value(2).isEmpty();
    if (hasTitle)
        return hasItem ? PageWithItems : hasValue ? PageWithValues : NoPage;
    return !hasItem && hasValue ? ValuesAlone : NoPage;
}

QStringList Vantiq_Settings_Widget::currentLines() const
{
    return {m_titleText, m_itemText2, m_itemText3};
}

/** Shows what has come before the pause; the event loop does not run meanwhile. */
static void paintAndPause(QWidget *changed)
{
    changed->repaint();
    QThread::msleep(linePauseMs);
}

void Vantiq_Settings_Widget::UpdateConfigMenuText(const QList<int> &info, const QStringList &label,
                                                  const QStringList &value)
{
    static constexpr int needed = 3;
    if (info.size() < needed) {
        NORDA_WARNING << "menu line: expected" << needed << "numbers, got" << info.size() << "after"
                      << excerpt(m_titleText);
        QThread::msleep(linePauseMs);
        return;
    }
    const int line = info[2];
    const QString labelText = label.join(QString());
    const QString valueText = value.join(QString());
    QWidget *changed = showLine(MenuLine(info[0]), line, labelText, valueText);
    const int type = GetCurrentType(currentLines());
    if (type == PageWithValues || type == ValuesAlone)
        keepRow(line, labelText, valueText);
    if (type == ValuesAlone) {
        layOutPage();
        changed = this;
    }
    paintAndPause(changed);
}

/** @return what changed on the screen */
QWidget *Vantiq_Settings_Widget::showLine(MenuLine kind, int line, const QString &label,
                                          const QString &value)
{
    switch (kind) {
    case MenuLine::Title:
        showTitle(label);
        return m_form->top_title_widget;
    case MenuLine::Item:
        return showItem(line, label + value, &m_itemText2);
    case MenuLine::Value:
        return showItem(line, label + value, &m_itemText3);
    }
    return this;
}

void Vantiq_Settings_Widget::showTitle(const QString &text)
{
    m_titleText = text;
    m_form->Txt_pop_title->setText(text);
}

/** @return what changed on the screen */
QWidget *Vantiq_Settings_Widget::showItem(int line, const QString &text, QString *stored)
{
    QWidget *row = m_lineWidgets.value(line);
    if (!row)
        return m_form->scrollArea_item_01; // there is no label for such a line
    *stored = text;
    QLabel *label = m_rowLabels[line - firstRowLine];
    label->setText(text);
    label->setAttribute(Qt::WA_TransparentForMouseEvents);
    addWidgetsToQVBoxLayout(row);
    return row;
}

void Vantiq_Settings_Widget::keepRow(int line, const QString &label, const QString &value)
{
    if (!m_lineWidgets.contains(line) || value.isEmpty())
        return;
    m_rowTexts.insert(label, value);
    m_pageRows.insert(line, m_rowTexts);
}

void Vantiq_Settings_Widget::layOutPage()
{
    clearQVBoxLayout(m_form->verticalLayout);
    for (auto kept = m_pageRows.cbegin(); kept != m_pageRows.cend(); ++kept) {
        QWidget *row = m_lineWidgets.value(kept.key());
        addWidgetsToQVBoxLayout(row);
        for (auto text = kept->cbegin(); text != kept->cend(); ++text)
            UpdateWidgetLabel(row, text.key() + text.value());
    }
}

void Vantiq_Settings_Widget::addWidgetsToQVBoxLayout(QWidget *row)
{
    QVBoxLayout *layout = m_form->verticalLayout;
    QWidget *contents = m_form->scrollAreaWidgetContents;
    row->show();
    row->setFixedHeight(rowHeight);
    layout->addWidget(row);
    // The width belongs to the scroll area; adjusted for a moment, all rows would be painted anew.
    contents->resize(contents->width(), layout->sizeHint().height());
    NORDA_TRACE << row->size() << contents->size() << m_form->scrollArea_item_01->sizeHint()
                << layout->sizeHint();
    contents->setFixedHeight(layout->count() * rowHeight + bottomSpace);
    layout->activate();
}

void Vantiq_Settings_Widget::clearQVBoxLayout(QVBoxLayout *layout)
{
    while (layout->count() > 0) {
        const std::unique_ptr<QLayoutItem> item(layout->takeAt(0));
        item->widget()->hide();
    }
}

/** For forms whose rows carry a label of their own; those of this form are written as they come. */
void Vantiq_Settings_Widget::UpdateWidgetLabel(QWidget *row, const QString &text)
{
    const auto *known = findChild<QWidget *>(row->objectName());
    if (!known)
        return;
    QString number = known->objectName();
    number.remove(QStringLiteral("item_bar_widget_"));
    if (auto *label = findChild<QLabel *>(QStringLiteral("item_bar_widget_%1").arg(number)))
        label->setText(text);
}

void Vantiq_Settings_Widget::SettingBtnClicked(int row)
{
    soundClickedBeep();
    emptyTexts();
    if (GetCurrentType(currentLines()) != PageWithValues)
        clearQVBoxLayout(m_form->verticalLayout);
    scrollToTop();
    send(&VtqAdaptor::NordaSetSelectedLineNumber, lineOfRow(row));
}

void Vantiq_Settings_Widget::onBackClicked()
{
    soundClickedBeep();
    emptyTexts();
    forgetRows();
    clearQVBoxLayout(m_form->verticalLayout);
    scrollToTop();
    NORDA_TRACE << GetCurrentType(currentLines());
    requestMenu();
    QThread::msleep(backPauseMs);
}

void Vantiq_Settings_Widget::emptyTexts()
{
    m_titleText.clear();
    m_itemText2.clear();
    m_itemText3.clear();
}

void Vantiq_Settings_Widget::forgetRows()
{
    m_rowTexts.clear();
    m_pageRows.clear();
}

void Vantiq_Settings_Widget::scrollToTop()
{
    m_form->scrollArea_item_01->verticalScrollBar()->setValue(0);
}

} // namespace norda
