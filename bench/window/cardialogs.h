#pragma once

#include <QString>

class QWidget;
class Rig;

/** Asks where a car is connected. @return the name of a source, empty for none */
QString askForCar(QWidget *window);
/** Reports that a car cannot be reached. @return whether to try again */
bool isTriedAgain(QWidget *window, const QString &error);
/**
 * Opens the source of a rig's setup, with a message and another try where it is a car.
 * @param error  one line, after the last try
 */
bool openFirst(Rig *rig, QString *error);
