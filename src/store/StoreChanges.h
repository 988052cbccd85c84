// Which of the published fields of the store came to differ in an operation.
#pragma once

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <utility>

namespace kelpa {

/// The published fields, in the order in which their changes are told.
enum class StoreField : std::uint8_t {
    windows,
    goals,
    unassignedTodos,
    previews,
    boardNavigation,
    todoEditorGoalID,
    todoEditorRequestID,
    toastMessage,
    toastOffersUndo,
    restorationID,
    canUndo,
    canRedo,
    searchText,
    isAccessibilityTrusted,
    isScreenCaptureTrusted,
    language,
    isAutoSortingGoals,
    isHidingGoalsWithoutOpenTodos,
    count,
};

class StoreChanges
{
public:
    static constexpr auto fieldCount = static_cast<std::size_t>(StoreField::count);
    using Fields = std::bitset<fieldCount>;

    /// `tell` is called at the end of an operation with the fields that changed in it; what it
    /// calls may begin another operation.
    explicit StoreChanges(std::function<void(const Fields&)> tell) : m_tell(std::move(tell)) {}

    /// Only within an operation.
    void mark(StoreField field) { m_fields.set(static_cast<std::size_t>(field)); }

    /// Stands at the top of every operation that may change published fields; operations within it
    /// are parts of it.
    class [[nodiscard]] Update
    {
    public:
        explicit Update(StoreChanges& changes) : m_changes(changes) { ++m_changes.m_depth; }
        ~Update()
        {
            if (--m_changes.m_depth == 0)
                m_changes.m_tell(std::exchange(m_changes.m_fields, {}));
        }
        Update(const Update&) = delete;
        Update& operator=(const Update&) = delete;

    private:
        StoreChanges& m_changes;
    };

private:
    std::function<void(const Fields&)> m_tell;
    Fields m_fields;
    int m_depth = 0;
};

} // namespace kelpa
