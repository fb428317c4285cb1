#include "vant_popup.h"

#include "debug.h"
#include "ui_vant_popup.h"

vant_popup::vant_popup(QWidget *parent) : QWidget(parent), m_form(std::make_unique<Ui_vant_popup>())
{
    m_form->setupUi(this);
    const QList<QLabel *> captions = {m_form->txt_peak, m_form->txt_hot,  m_form->txt_limit,
                                      m_form->txt_lean, m_form->txt_high, m_form->txt_max,
                                      m_form->txt_yes,  m_form->txt_no};
    for (QLabel *caption : captions)
        caption->setAttribute(Qt::WA_TransparentForMouseEvents);
    setGeometry(0, 0, 1024, 600);
}

vant_popup::~vant_popup() = default;

void vant_popup::setPopType(int type)
{
    NORDA_TRACE << "setPopType ------>>:" << type;
    if (type >= 0 && type < m_form->stackedWidget->count())
        m_form->stackedWidget->setCurrentIndex(type);
}

void vant_popup::on_Key_close_clicked()
{
    emit closeclicked();
}
