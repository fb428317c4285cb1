#pragma once

#include <QCoreApplication>
#include <QTemporaryFile>

#include <cstdint>

/** A fuzzer's bytes as a file, for what is read from one. */
class InputFile
{
public:
    /** Makes the application as well, and keeps warnings quiet. */
    InputFile(int *argc, char **argv) : m_application(*argc, argv)
    {
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
        if (!m_file.open())
            qFatal("no temporary file");
    }

    /** @return the path of a file that holds these bytes, until the next ones */
    QString hold(const uint8_t *data, size_t size)
    {
        m_file.resize(0);
        m_file.seek(0);
        m_file.write(reinterpret_cast<const char *>(data), qint64(size));
        m_file.flush();
        return m_file.fileName();
    }

private:
    QCoreApplication m_application;
    QTemporaryFile m_file;
};
