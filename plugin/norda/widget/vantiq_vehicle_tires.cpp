#include "debug.h"
#include "ui_norda_vehicles.h"
#include "vantiq_vehicle_widget.h"

namespace norda {

struct TireImages
{
    const char *icon;
    const char *textStyle;
};

// clang-format off
static constexpr TireImages tireLooks[] = {
    {":/icon/vehicleicon/typer_1.png",     "color: rgb(255, 255, 255);"},
    {":/icon/vehicleicon/tyre_yellow.png", "color: rgb(248, 255, 55);"},
};
// clang-format on

/** A style sheet is polished anew whenever it is set, even to what it was. */
static void setTextStyle(QLabel *text, const TireImages &look)
{
    const QString style = QLatin1String(look.textStyle);
    if (text->styleSheet() != style)
        text->setStyleSheet(style);
}

void Vantiq_Vehicle_Widget::showTireIcon(QLabel *icon, TireLook look)
{
    m_images.show(icon, QLatin1String(tireLooks[look].icon));
}

void Vantiq_Vehicle_Widget::showTireTexts(TireText text, unsigned char flags,
                                          const QStringList &values)
{
    const bool isValid = flags & validTireTexts;
    for (int i = 0; i < TireCount; ++i) {
        const TireBox &tire = m_tires[i];
        const TireLook look = flags & (1 << i) ? WarningTire : NormalTire;
        showTireIcon(tire.icon, look);
        setTextStyle(tire.*text, tireLooks[isValid ? look : NormalTire]);
        if (!isValid)
            (tire.*text)->setText(QStringLiteral("null"));
        else if (i < values.size())
            (tire.*text)->setText(values[i]);
    }
}

void Vantiq_Vehicle_Widget::onTirePressureStatus(unsigned char flags, unsigned char aux,
                                                 const QStringList &values)
{
    NORDA_TRACE << flags << aux << values;
    updateTirePressureStatus(flags, aux, values);
}

void Vantiq_Vehicle_Widget::onNordaTirePressureStatus(unsigned char flags, unsigned char aux,
                                                      const QStringList &values)
{
    NORDA_TRACE << flags << aux << values;
    updateTirePressureStatus(flags, aux, values);
}

void Vantiq_Vehicle_Widget::onTireTemperatureStatus(unsigned char flags, unsigned char aux,
                                                    const QStringList &values)
{
    NORDA_TRACE << flags << aux << values;
    updateTireTemperatureStatus(flags, aux, values);
}

void Vantiq_Vehicle_Widget::updateTirePressureStatus(unsigned char flags, unsigned char,
                                                     const QStringList &values)
{
    showTireTexts(&TireBox::pressure, flags, values);
}

void Vantiq_Vehicle_Widget::updateTireTemperatureStatus(unsigned char flags, unsigned char,
                                                        const QStringList &values)
{
    showTireTexts(&TireBox::temperature, flags, values);
}

void Vantiq_Vehicle_Widget::updateNordaTirePressureStatus(unsigned char, unsigned char,
                                                          const QStringList &values)
{
    // The rear pair stands the other way round than in the first reading.
    static constexpr Tire order[] = {FrontLeft, FrontRight, RearRight, RearLeft};
    static constexpr int checkEngine = TireCount;
    if (values.size() <= checkEngine) {
        NORDA_WARNING << "tire pressures: expected" << checkEngine + 1 << "texts, got"
                      << values.size();
        return;
    }
    for (int i = 0; i < TireCount; ++i) {
        QLabel *text = m_tires[order[i]].pressure;
        setTextStyle(text, tireLooks[NormalTire]);
        text->setText(values[i]);
    }
    m_form->key_engine->setChecked(values[checkEngine].toInt() == 1);
}

void Vantiq_Vehicle_Widget::updateNordaTireTemperatureStatus(QLabel *icon, QLabel *text, int value)
{
    static constexpr int warmFahrenheit = 100;
    if (value == noTireSensor) {
        text->setText(QStringLiteral("Error"));
        return;
    }
    const TireLook look = value < warmFahrenheit ? NormalTire : WarningTire;
    showTireIcon(icon, look);
    setTextStyle(text, tireLooks[look]);
    text->setText(QString::number(value) + QLatin1Char('F'));
}

} // namespace norda
