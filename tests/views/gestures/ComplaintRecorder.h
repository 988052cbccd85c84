// What the views and the toolkit complain of.
#pragma once

#include <QMutex>
#include <QMutexLocker>
#include <QStringList>
#include <QtGlobal>

#include <utility>

namespace kelpa::test {

/// Records every warning while it lives. One at a time; any thread may log.
class ComplaintRecorder
{
public:
    ComplaintRecorder()
    {
        recorder = this;
        // What receives may be called from here on.
        m_before = qInstallMessageHandler(&ComplaintRecorder::receive);
    }
    ComplaintRecorder(const ComplaintRecorder&) = delete;
    ComplaintRecorder& operator=(const ComplaintRecorder&) = delete;
    ~ComplaintRecorder()
    {
        qInstallMessageHandler(m_before);
        recorder = nullptr;
    }

    /// Those since the last call.
    QStringList take()
    {
        const QMutexLocker lock(&m_mutex);
        return std::exchange(m_complaints, {});
    }

private:
    static void receive(QtMsgType type, const QMessageLogContext& /*context*/, const QString& text)
    {
        // The platform without a screen can neither raise a window nor place it.
        const bool isOfPlatform = text.startsWith(u"This plugin does not support");
        if (type == QtDebugMsg || type == QtInfoMsg || isOfPlatform)
            return;
        const QMutexLocker lock(&recorder->m_mutex);
        recorder->m_complaints.append(text);
    }

    static inline ComplaintRecorder* recorder = nullptr;

    QtMessageHandler m_before = nullptr;
    QMutex m_mutex;
    QStringList m_complaints;
};

} // namespace kelpa::test
