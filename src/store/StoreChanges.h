// Which of the published fields of the store changed in an operation.
#pragma once

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <utility>

namespace kelpa {

/// The published fields, in the order in which their signals are emitted.
enum class StoreField : std::uint8_t {
    windows,
    goals,
    unassignedTodos,
    lingeringTodoID,
    previews,
    boardNavigation,
    todoEditorGoalID,
    todoEditorRequestID,
    toastMessage,
    toastOffersUndo,
    toastOffersManualOrder,
    restorationID,
    canUndo,
    canRedo,
    canGoBack,
    searchText,
    isAccessibilityTrusted,
    isScreenCaptureTrusted,
    obstacles,
    abilities,
    language,
    isLanguageChosen,
    isAutoSortingGoals,
    isHidingGoalsWithoutOpenTodos,
    unsortedFold,
    isRememberingWindows,
    windowMemory,
    pins,
    isClosingQuitting,
    isSavingSlowly,
    trouble,
    count,
};

class StoreChanges
{
public:
    static constexpr auto fieldCount = static_cast<std::size_t>(StoreField::count);
    using Fields = std::bitset<fieldCount>;

    using Notify = std::function<void(const Fields& changed)>;

    /// Calls `notify` at the end of each operation with the fields that changed in it; `notify` may
    /// begin another operation.
    explicit StoreChanges(Notify notify) : m_notify(std::move(notify)) {}

    /// Only within an operation.
    void mark(StoreField field) { m_fields.set(static_cast<std::size_t>(field)); }

    /// The scope of an operation that may change published fields. Operations within it are parts
    /// of it: only the outermost one notifies.
    class [[nodiscard]] Update
    {
    public:
        explicit Update(StoreChanges& changes) : m_changes(changes) { ++m_changes.m_depth; }
        ~Update()
        {
            if (--m_changes.m_depth == 0)
                m_changes.m_notify(std::exchange(m_changes.m_fields, {}));
        }
        Update(const Update&) = delete;
        Update& operator=(const Update&) = delete;

    private:
        StoreChanges& m_changes;
    };

private:
    Notify m_notify;
    Fields m_fields;
    int m_depth = 0;
};

} // namespace kelpa
