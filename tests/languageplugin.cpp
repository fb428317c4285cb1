// A plugin that prints the unit's language, and may choose another as a settings page would.

#include "appplugin.h"
#include "cm/basewindow.h"
#include "translator.h"

#include <QTimer>
#include <QWidget>

#include <cstdio>

static void print(const char *what, const QString &language)
{
    std::printf("%s %s\n", what, qPrintable(language));
    std::fflush(stdout);
}

class LanguageWindow : public cm::BaseWindow
{
public:
    using cm::BaseWindow::BaseWindow;
    void onCreate() override
    {
        setMainWidget(new QWidget, 80);
        print("created in", Translator::instance()->language());
        const QString wanted = qEnvironmentVariable("NORDA_TEST_CHOOSES");
        if (!wanted.isEmpty())
            QTimer::singleShot(0, this, [wanted] { Translator::instance()->setLanguage(wanted); });
    }
    void setTranslation(const QString &locale) override { print("changed to", locale); }
};

class LanguagePlugin : public QObject, public AppPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.stavel.Qt.nordaPlugin")
    Q_INTERFACES(AppPlugin)
public:
    void create() override {}
    QList<int> windowInterfaceID() override { return {80}; }
    QList<int> sourceInterfaceID() override { return {}; }
    WindowInterface *requestWindowInterface(int) override { return &m_window; }
    SourceInterface *requestSourceInterface(int) override { return nullptr; }

private:
    LanguageWindow m_window{nullptr};
};

#include "languageplugin.moc"
