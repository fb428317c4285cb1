#pragma once

#include "cm/basewindow.h"
#include "plugin_global.h"

namespace norda {

/** A window without content of its own, for hosts that bring theirs; no id serves it. */
class NORDA_PLUGIN_EXPORT MainWindow : public cm::BaseWindow
{
    Q_OBJECT
public:
    explicit MainWindow(QObject *parent = nullptr);
    ~MainWindow() override;

    QString name() override;
    void onCreate() override;
    void onDestroy() override;
    void onShow(const QByteArray &argument) override;
    int backEvent() override;
    int keyEvent(KeyEvent *event) override;

public slots:
    void onDestroyObj();

private:
    QWidget *m_widget = nullptr;
};

} // namespace norda
