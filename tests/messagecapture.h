#pragma once

#include <QStringList>
#include <QtGlobal>

/** Collects everything that is written to the Qt debug stream while it lives. */
class MessageCapture
{
public:
    struct Message
    {
        QtMsgType type;
        QString text;
        QByteArray file;
        QByteArray function;
        int line;
    };

    MessageCapture()
    {
        current() = this;
        m_previous = qInstallMessageHandler(collect);
    }
    ~MessageCapture()
    {
        qInstallMessageHandler(m_previous);
        current() = nullptr;
    }
    Q_DISABLE_COPY(MessageCapture)

    QList<Message> take() { return std::exchange(m_messages, {}); }
    QStringList takeTexts()
    {
        QStringList texts;
        for (const Message &message : take())
            texts.append(message.text);
        return texts;
    }

private:
    static MessageCapture *&current()
    {
        static MessageCapture *capture = nullptr;
        return capture;
    }
    static void collect(QtMsgType type, const QMessageLogContext &context, const QString &text)
    {
        current()->m_messages.append({type, text, context.file, context.function, context.line});
    }

    QList<Message> m_messages;
    QtMessageHandler m_previous;
};
