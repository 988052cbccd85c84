// Gives numbers to windows that their compositor names, for window systems on which Kelpa cannot
// mark a window. The same window keeps its number as long as the compositor runs, also when Kelpa
// starts again; of another run nothing is known, since compositors begin to count anew.
//
// What it needs of a compositor: within one run, a name is never given to a second window.
#pragma once

#include "platform/numbers/NameTableFile.h"
#include "platform/numbers/NumberSupply.h"

#include <QByteArray>

#include <optional>
#include <set>
#include <vector>

namespace kelpa {

/// Used on one thread at a time.
class NamedWindowNumbers
{
public:
    /// `highWaterMark` and `taken` as for `NumberSupply`. The references outlive this object.
    NamedWindowNumbers(NumberReservation& reservation, NameTableStorage& storage,
                       WindowID highWaterMark, std::set<WindowID> taken);

    /// From now on the windows are those of `run`, an identity that is not empty and that no other
    /// run of a compositor has. Reads the disk when it is another run than before.
    void begin(const QByteArray& run);

    /// The window that was called `from` is called `to` from now on. It keeps its number, unless
    /// `to` has one already, which was stored. Written with the next `number`.
    void rename(const QByteArray& from, const QByteArray& to);

    /// The numbers of all windows that there are, in the order of `names`; absent for a name that
    /// is empty or too long, or when there are no more numbers. Writes the disk when there is a new
    /// name: a number that was not written would be another one after the next start. One that
    /// could not be written is tried again.
    std::vector<std::optional<WindowID>> number(const std::vector<QByteArray>& names);

private:
    std::optional<WindowID> numberOf(const QByteArray& name);
    void forgetClosed(const std::vector<QByteArray>& names);

    NameTableStorage& m_storage;
    NumberSupply m_supply;
    NameTable m_table;
    /// The table has changed since it was written.
    bool m_isUnwritten = false;
};

} // namespace kelpa
