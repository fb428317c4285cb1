#pragma once

#include "plugin_global.h"

#include <QWidget>

#include <memory>

class Ui_vant_popup;

/**
 * The module's adjustment popups as one full-screen dialog of seven pages. It carries fixed texts
 * and keys only; nothing of the plugin shows it. Hosts and plugins that render the module's popups
 * build on it, and the owner shows, hides and deletes it.
 */
class NORDA_PLUGIN_EXPORT vant_popup : public QWidget
{
    Q_OBJECT
public:
    explicit vant_popup(QWidget *parent = nullptr);
    ~vant_popup() override;

    /**
     * Shows a page.
     * @param type  0 gauge warnings, 1 tank capacity, 2 reset of the fuel economy, 3 low voltage,
     *              4 front and 5 rear tire threshold, 6 service; any other leaves the page
     */
    void setPopType(int type);

signals:
    /** The close key was touched; the dialog does not hide itself. */
    void closeclicked();

public slots:
    // Connected to the key by its name when the form is set up.
    void on_Key_close_clicked();

private:
    const std::unique_ptr<Ui_vant_popup> m_form;
};

namespace norda {
using ::vant_popup;
}
