#pragma once

#include "plugin_global.h"

#include <QWidget>

#include <memory>

class Ui_vantiq_top_bar;

namespace norda {

/** A page title between a back key and a settings key. Screens bring their own title strip. */
class NORDA_PLUGIN_EXPORT Vantiq_Top_Bar_Widget : public QWidget
{
    Q_OBJECT
public:
    explicit Vantiq_Top_Bar_Widget(QWidget *parent = nullptr);
    ~Vantiq_Top_Bar_Widget() override;

    /** Titles the bar with the name of page 0 to 4 in the host's language; others are ignored. */
    void setCurrentPageTitle(int page);
    void soundClickedBeep();

public slots:
    void onBackClicked();
    void onSettingsClicked();

signals:
    void gotoLastPage();
    void gotoSettings();

private:
    const std::unique_ptr<Ui_vantiq_top_bar> m_form;
};

} // namespace norda
