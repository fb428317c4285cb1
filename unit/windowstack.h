#pragma once

#include <QList>
#include <QObject>
#include <QPluginLoader>
#include <QPointer>
#include <QWidget>

class AppPlugin;
class Screen;
class SourceInterface;
class WindowInterface;

/** The windows of a plugin: loads it, opens them on the screen and sends keys to them. */
class WindowStack : public QObject
{
    Q_OBJECT
public:
    explicit WindowStack(Screen *screen, QObject *parent = nullptr);
    ~WindowStack() override;

    /** @param error  one line that says what is wrong with the file */
    bool load(const QString &file, QString *error);
    /** The id that a plugin states in its metadata. */
    static QString wantedIid();
    QList<int> windowIds() const;
    int currentWindow() const { return m_stack.isEmpty() ? -1 : m_stack.constLast(); }
    /** An audio source of the plugin, null for an id that it does not have. */
    SourceInterface *source(int id) const;
    /** The widget of the open window, null when there is none. */
    QWidget *currentPage() const;

public slots:
    /** Opens a page as its key on the navigation bar does. */
    void openWindow(int id);
    void back();
    /** Over the open page, which stays the open one. */
    void openCamera();
    /** Where the camera is open, the page below it resumes. */
    void closeCamera();
    /** A hardware key: the open window may use it. @return whether it did */
    bool pressKey(int key);
    /** The unit's own key for the split view, which the open page may handle. */
    void toggleSplit();
    /** Destroys the content of the open window and creates it again. */
    void recreateWindow();
    /** The same for any window; one that is not open is created when it opens next. */
    void rebuildWindow(int id);

signals:
    void windowOpened(int id);
    /** A page has closed the camera, which was over it or over another page. */
    void cameraLeft();

private:
    void onTouched(int code);
    void bringToFront(int id);
    void changeTo(int id);
    void passLanguage();
    void leave(int id);
    void enter(int id);
    void bindPage(QWidget *page, int id);
    WindowInterface *window(int id) const;

    Screen *m_screen;
    QPluginLoader m_loader;
    AppPlugin *m_plugin = nullptr;
    QList<int> m_stack; // the open window is last
    QPointer<QWidget> m_boundPage;
};
