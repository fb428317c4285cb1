#pragma once

#include "norda/vtqadaptor.h"

/** One of every signal of the gauges page, with values that differ from those of the turn before.
 */
inline void emitGaugesBurst(int turn)
{
    norda::VtqAdaptor *adaptor = norda::VtqAdaptor::instance();
    const QString number = QString::number(1000 + turn % 2000);
    const auto position = static_cast<unsigned char>(turn % 100);
    const QString unit = QStringLiteral("F");
    const QString title = QStringLiteral("Title ") + number;
    emit adaptor->gaugeTitlesNotify({title, title, title, title, title});
    emit adaptor->centerGaugeValueNotify(number, QStringLiteral("RPM"), position);
    emit adaptor->gaugeTLValueNotify(number, position);
    emit adaptor->gaugeTLValueDualNotify(number, unit, position);
    emit adaptor->gaugeTRValueNotify(number, position);
    emit adaptor->gaugeTRValueDualNotify(number, unit, position);
    emit adaptor->gaugeBLValueNotify(number, position);
    emit adaptor->gaugeBLValueDualNotify(number, unit, position);
    emit adaptor->gaugeBRValueNotify(number, position);
    emit adaptor->gaugeBRValueDualNotify(number, unit, position);
    emit adaptor->peakIndicatorNotify(1);
    emit adaptor->peakIndicatorTextNotify(number);
    emit adaptor->gauTopBarTextNotify(title);
    emit adaptor->shifterArrowIndicatorNotify(static_cast<unsigned char>(turn & 1));
    emit adaptor->activePresetStatusNotify(position);
    emit adaptor->centerGaugeRedLinePositionNotify(position);
    emit adaptor->guiDisplayTypeNotify(0);
    emit adaptor->Properties2TextInfo({0, 13, turn % 250, turn % 250, turn % 250, turn % 100});
}
