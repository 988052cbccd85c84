#include "windows/memory/MemoryMatching.h"

#include <QSet>

#include <algorithm>
#include <vector>

namespace kelpa {

namespace {

/// More would not be read in a menu.
constexpr std::size_t mostOffers = 20;

/// Positions in the lists of absent and of new windows.
struct Group
{
    std::vector<qsizetype> absent;
    std::vector<qsizetype> fresh;
};

class Matching
{
public:
    Matching(const QList<AbsentWindow>& absent, const QList<NewWindow>& fresh)
        : m_absent(absent), m_fresh(fresh), m_isTaken(static_cast<std::size_t>(absent.size())),
          m_isDecided(static_cast<std::size_t>(fresh.size())),
          m_offers(static_cast<std::size_t>(fresh.size()))
    {}

    WindowMatches result()
    {
        for (const WindowKey key : allWindowKeys)
            matchBy(key);
        matchUnnamed();
        matchOnlyOnes();
        for (qsizetype i = 0; i < m_fresh.size(); ++i)
            offer(i);
        return std::move(m_matches);
    }

private:
    bool isTaken(qsizetype absent) const { return m_isTaken[static_cast<std::size_t>(absent)]; }
    bool isDecided(qsizetype fresh) const { return m_isDecided[static_cast<std::size_t>(fresh)]; }

    /// The undecided windows with each text that both sides have.
    template <class TextOf>
    QHash<QString, Group> groupsBy(TextOf textOf) const
    {
        QHash<QString, Group> groups;
        for (qsizetype i = 0; i < m_fresh.size(); ++i) {
            const QString text = isDecided(i) ? QString() : textOf(m_fresh.at(i).keys);
            if (!text.isEmpty())
                groups[text].fresh.push_back(i);
        }
        for (qsizetype i = 0; i < m_absent.size(); ++i) {
            const QString text = isTaken(i) ? QString() : textOf(m_absent.at(i).keys);
            if (text.isEmpty())
                continue;
            const auto group = groups.find(text);
            if (group != groups.end())
                group->absent.push_back(i);
        }
        return groups;
    }

    void matchBy(WindowKey key)
    {
        const auto groups =
            groupsBy([key](const WindowKeys& keys) -> const QString& { return keys[key]; });
        for (const Group& group : groups) {
            if (group.absent.empty())
                continue;
            if (isCertain(group, key))
                decide(group);
            else
                collectOffers(group);
        }
    }

    /// Whether each new window of the group belongs to the one goal of the absent ones.
    bool isCertain(const Group& group, WindowKey key) const
    {
        if (group.fresh.size() > group.absent.size())
            return false;
        const GoalID goalID = m_absent.at(group.absent.front()).goalID;
        const auto isOfGoal = [&](qsizetype each) {
            const AbsentWindow& absent = m_absent.at(each);
            return absent.goalID == goalID && !isShared(absent.shared, key);
        };
        if (!std::ranges::all_of(group.absent, isOfGoal))
            return false;
        return std::ranges::all_of(group.fresh, [&](qsizetype fresh) {
            return std::ranges::all_of(group.absent, [&](qsizetype absent) {
                return canBe(fresh, absent) &&
                       agree(m_fresh.at(fresh), m_absent.at(absent).keys, key);
            });
        });
    }

    /// Whether nothing else speaks against two windows that have a key in common.
    static bool agree(const NewWindow& fresh, const WindowKeys& absent, WindowKey key)
    {
        switch (key) {
        case WindowKey::session:
            // Some applications give one role to all of their windows.
            return !contradict(fresh.keys.title, absent.title) &&
                   (absent.hasNumberedRole ||
                    (!fresh.keys.title.saysNothing && !absent.title.saysNothing &&
                     fresh.hasFirstContent && fresh.keys.document == absent.document));
        case WindowKey::document:
            return fresh.hasFirstContent;
        case WindowKey::roleAndTitle:
        case WindowKey::title:
            // Files in two folders may have one name, and a document is reported late.
            return fresh.hasFirstContent && fresh.keys.document == absent.document;
        }
        return false;
    }

    bool canBe(qsizetype fresh, qsizetype absent) const
    {
        return m_fresh.at(fresh).windowID > m_absent.at(absent).newestWindow;
    }

    void decide(const Group& group)
    {
        for (std::size_t i = 0; i < group.fresh.size(); ++i) {
            m_isDecided[static_cast<std::size_t>(group.fresh[i])] = true;
            m_isTaken[static_cast<std::size_t>(group.absent[i])] = true;
            m_matches.insert(m_fresh.at(group.fresh[i]).windowID,
                             {MatchCertainty::certain, {m_absent.at(group.absent[i]).windowID}});
        }
    }

    void collectOffers(const Group& group)
    {
        for (const qsizetype fresh : group.fresh) {
            std::vector<qsizetype>& offers = m_offers[static_cast<std::size_t>(fresh)];
            for (const qsizetype absent : group.absent) {
                if (offers.size() == mostOffers)
                    break;
                if (canBe(fresh, absent) && std::ranges::find(offers, absent) == offers.end())
                    offers.push_back(absent);
            }
        }
    }

    /// Titles that say nothing are offered where they lead to one goal only: a new terminal in the
    /// home folder may be any of those that were there.
    void matchUnnamed()
    {
        const auto groups = groupsBy([](const WindowKeys& keys) {
            return keys.title.saysNothing && !keys.title.text.isEmpty()
                       ? keys.application + QChar(u'\x1f') + keys.title.text
                       : QString();
        });
        for (const Group& group : groups) {
            const auto isOfSameGoal = [&](qsizetype each) {
                return m_absent.at(each).goalID == m_absent.at(group.absent.front()).goalID;
            };
            if (group.fresh.size() <= group.absent.size() &&
                std::ranges::all_of(group.absent, isOfSameGoal))
                collectOffers(group);
        }
    }

    /// The only new window of an application and its only absent one.
    void matchOnlyOnes()
    {
        const auto groups = groupsBy([](const WindowKeys& keys) { return keys.application; });
        for (const Group& group : groups) {
            if (group.fresh.size() != 1 || group.absent.size() != 1)
                continue;
            if (!contradict(m_fresh.at(group.fresh.front()).keys.title,
                            m_absent.at(group.absent.front()).keys.title))
                collectOffers(group);
        }
    }

    void offer(qsizetype fresh)
    {
        if (isDecided(fresh))
            return;
        WindowMatch match;
        for (const qsizetype absent : m_offers[static_cast<std::size_t>(fresh)]) {
            if (!isTaken(absent))
                match.windows.append(m_absent.at(absent).windowID);
        }
        if (!match.windows.isEmpty())
            m_matches.insert(m_fresh.at(fresh).windowID, match);
    }

    const QList<AbsentWindow>& m_absent;
    const QList<NewWindow>& m_fresh;
    /// Absent windows that a new one certainly is.
    std::vector<bool> m_isTaken;
    std::vector<bool> m_isDecided;
    /// By new window; strictest first.
    std::vector<std::vector<qsizetype>> m_offers;
    WindowMatches m_matches;
};

} // namespace

WindowMatches matchedWindows(const QList<AbsentWindow>& absent, const QList<NewWindow>& newWindows)
{
    return Matching(absent, newWindows).result();
}

} // namespace kelpa
