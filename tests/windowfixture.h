#pragma once

#include "benchfixture.h"
#include "window/screenview.h"

#include <QAction>
#include <QTemporaryDir>

/** The bench in its window, used by keys, with drives to open. */
class WindowFixture : public BenchFixture
{
public:
    QAction *command(const char *name) const { return find<QAction>(name); }
    ScreenView *view() const { return find<ScreenView>("screenView"); }
    void press(int key, Qt::KeyboardModifiers modifiers = {}) const
    {
        QWidget *target = QApplication::focusWidget();
        QTest::keyClick(target ? target : m_window.data(), Qt::Key(key), modifiers);
        QCoreApplication::processEvents();
    }
    void resizeWindow(QSize size) const
    {
        m_window->resize(size);
        QCoreApplication::processEvents();
    }
    /** A recording whose battery says the last digit of the second. */
    QString writeDrive(const QString &name, int signalCount, int everySeconds = 1) const
    {
        const QString file = m_folder.filePath(name);
        QString error;
        module::RecordingWriter writer(file, "A drive of " + name, &error);
        for (int i = 0; i < signalCount; ++i)
            writer.writeSignal(i * everySeconds * 1000, "batteryVoltage",
                               {QString("12.%1V").arg(i % 10)});
        writer.finish(signalCount * everySeconds * 1000);
        return file;
    }
    void openDriveOf(const QString &name, int signalCount, int everySeconds = 1) const
    {
        m_window->openDrive(writeDrive(name, signalCount, everySeconds));
    }

    QTemporaryDir m_folder;
};
