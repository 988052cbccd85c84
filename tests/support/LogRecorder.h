// Records what one category of the debug log reports.
#pragma once

#include <QLoggingCategory>
#include <QString>
#include <QStringList>

#include <mutex>

namespace kelpa::test {

/// Switches the category on while it lives; one at a time. The messages of other categories are
/// dropped. Any thread may log.
class LogRecorder
{
public:
    explicit LogRecorder(const QString& category) : m_category(category)
    {
        recorder = this;
        QLoggingCategory::setFilterRules(category + QStringLiteral(".debug=true"));
        m_before = qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext& context, const QString& text) {
                recorder->record(QString::fromLatin1(context.category), text);
            });
    }
    LogRecorder(const LogRecorder&) = delete;
    LogRecorder& operator=(const LogRecorder&) = delete;
    ~LogRecorder()
    {
        qInstallMessageHandler(m_before);
        QLoggingCategory::setFilterRules({});
    }

    /// In the order in which they arrived.
    QStringList messages() const
    {
        const std::scoped_lock lock(m_mutex);
        return m_messages;
    }

private:
    void record(const QString& category, const QString& text)
    {
        const std::scoped_lock lock(m_mutex);
        if (category == m_category)
            m_messages.append(text);
    }

    static inline LogRecorder* recorder = nullptr;

    const QString m_category;
    QtMessageHandler m_before = nullptr;
    mutable std::mutex m_mutex;
    QStringList m_messages;
};

} // namespace kelpa::test
