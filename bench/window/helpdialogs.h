#pragma once

class QWidget;

/** Lists all keys; the bench stays in use meanwhile. */
void showKeys(QWidget *window);
void showAbout(QWidget *window);
