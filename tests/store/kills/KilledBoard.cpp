#include "store/kills/KilledBoard.h"

#include "platform/sqlite/SqliteSettingsStore.h"
#include "platform/sqlite/WriteBehindSettings.h"
#include "store/WindowStore.h"
#include "support/FakeDesktop.h"
#include "support/ManualScheduler.h"

#include <QCryptographicHash>

#include <algorithm>
#include <memory>
#include <random>
#include <unistd.h>

namespace kelpa::test {

namespace {

constexpr qsizetype mostGoals = 8;
constexpr qsizetype mostTodos = 12;
constexpr int windowCount = 5;

bool send(int pipe, BoardMessage::Kind kind, const Digest& digest)
{
    const BoardMessage message{kind, digest};
    return ::write(pipe, &message, sizeof message) == ssize_t{sizeof message};
}

/// Hands everything to the real store, and reports each write before and after.
class ReportingSettings final : public SettingsStore
{
public:
    ReportingSettings(std::unique_ptr<SettingsStore> inner, QMap<QString, SettingsValue> values,
                      int pipe)
        : m_inner(std::move(inner)), m_values(std::move(values)), m_pipe(pipe)
    {}

    bool isLoaded() const override { return m_inner->isLoaded(); }
    std::optional<SettingsValue> value(const QString& key) const override
    {
        return m_inner->value(key);
    }
    bool write(const std::vector<SettingsEntry>& entries) override
    {
        for (const SettingsEntry& entry : entries)
            m_values.insert(entry.key, entry.value);
        const Digest digest = digestOf(m_values);
        m_isHeard = m_isHeard && send(m_pipe, BoardMessage::Kind::storing, digest);
        const bool isStored = m_inner->write(entries);
        if (isStored)
            m_isHeard = m_isHeard && send(m_pipe, BoardMessage::Kind::stored, digest);
        return isStored;
    }
    bool copyAside(const QString& key) override { return m_inner->copyAside(key); }
    bool flush() override { return m_inner->flush(); }
    bool isSaving() const override { return m_inner->isSaving(); }

    bool isHeard() const { return m_isHeard; }

private:
    const std::unique_ptr<SettingsStore> m_inner;
    QMap<QString, SettingsValue> m_values;
    const int m_pipe;
    bool m_isHeard = true;
};

class Changes
{
public:
    Changes(WindowStore& store, std::uint64_t seed) : m_store(store), m_random(seed) {}

    void change()
    {
        const std::optional<GoalID> list = anyList();
        const QList<TodoItem> todos = todosOf(list);
        const QString title = QStringLiteral("%1 of %2").arg(below(1000)).arg(below(1000));
        switch (below(9)) {
        case 0:
            if (m_store.goals().size() < mostGoals)
                m_store.createGoal(title);
            else
                m_store.deleteGoal(m_store.goals()[below(m_store.goals().size())].id);
            return;
        case 1:
        case 2:
            if (todos.size() < mostTodos)
                m_store.addTodo(title, list);
            else
                m_store.deleteTodo(todos[below(todos.size())].id, list);
            return;
        case 3:
            if (!todos.isEmpty())
                m_store.toggleTodo(todos[below(todos.size())].id, list);
            return;
        case 4:
            if (!todos.isEmpty())
                m_store.moveTodo(todos[below(todos.size())].id, list, anyList());
            return;
        case 5:
        case 6:
            m_store.assign(static_cast<WindowID>(1 + below(windowCount)), anyList());
            return;
        case 7:
            m_store.undo();
            return;
        default:
            m_store.redo();
        }
    }

private:
    qsizetype below(qsizetype bound)
    {
        return std::uniform_int_distribution<qsizetype>(0, bound - 1)(m_random);
    }
    std::optional<GoalID> anyList()
    {
        const qsizetype index = below(m_store.goals().size() + 1) - 1;
        return index < 0 ? std::nullopt : std::optional(m_store.goals()[index].id);
    }
    QList<TodoItem> todosOf(std::optional<GoalID> list) const
    {
        return list ? goalWith(*list, m_store.goals())->todos : m_store.unassignedTodos();
    }

    WindowStore& m_store;
    std::mt19937_64 m_random;
};

} // namespace

Digest digestOf(const QMap<QString, SettingsValue>& values)
{
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (auto each = values.constBegin(); each != values.constEnd(); ++each) {
        QByteArray value;
        if (const auto* const bytes = std::get_if<QByteArray>(&each.value()))
            value = *bytes;
        else if (const auto* const text = std::get_if<QString>(&each.value()))
            value = text->toUtf8();
        else
            value = std::get<bool>(each.value()) ? "true" : "false";
        hash.addData(each.key().toUtf8() + '=' + QByteArray::number(value.size()) + ':' + value);
    }
    Digest digest{};
    const QByteArray result = hash.result();
    std::copy(result.begin(), result.end(), digest.begin());
    return digest;
}

std::optional<BoardMessage> readMessage(int pipe)
{
    // Each was written at once, and so is never cut.
    BoardMessage message;
    return ::read(pipe, &message, sizeof message) == ssize_t{sizeof message}
               ? std::optional(message)
               : std::nullopt;
}

bool changeBoardForever(const QString& path, Saving saving, std::uint64_t seed, int pipe)
{
    auto file = std::make_unique<SqliteSettingsStore>(path);
    const QMap<QString, SettingsValue> values = file->values();
    std::unique_ptr<SettingsStore> inner;
    if (saving == Saving::behind)
        inner = std::make_unique<WriteBehindSettings>(std::move(file));
    else
        inner = std::move(file);
    ReportingSettings settings(std::move(inner), values, pipe);
    FakeDesktop desktop;
    for (int i = 1; i <= windowCount; ++i)
        desktop.addWindow(static_cast<WindowID>(i), 100, QStringLiteral("Window %1").arg(i));
    ManualScheduler scheduler;
    WindowStore store(desktop.platform(), settings, scheduler);
    store.awaitWindows({});
    store.refresh();
    Changes changes(store, seed);
    while (settings.isHeard())
        changes.change();
    return false;
}

} // namespace kelpa::test
