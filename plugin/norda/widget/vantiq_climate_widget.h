#pragma once

#include "datascreen.h"

#include <memory>

class Ui_norda_vantiq_climate;

namespace norda {

/** The climate screen. Its lists and settings exist once per zone. */
class Vantiq_Climate_Widget : public DataScreen
{
    Q_OBJECT
public:
    explicit Vantiq_Climate_Widget(QWidget *parent = nullptr);
    ~Vantiq_Climate_Widget() override;

public slots:
    void onEnter() override;
    /** The host comes back from a view that covered the screen. */
    void resume();

    void onGuiDisplayTypeChanged(unsigned char type);
    void onSecondListBackClicked();
    void onSecondListUpClicked();
    void onSecondListDnClicked();

private:
    const std::unique_ptr<Ui_norda_vantiq_climate> m_form;
};

} // namespace norda
