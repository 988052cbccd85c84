// The windows of a FakeCompositor, in both protocols. A test sends each event itself, in whatever
// order it likes.
#pragma once

#include "support/wayland/FakeCompositor.h"

#include <QStringList>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

struct wl_global;
struct wl_resource;

namespace kelpa::test {

/// A window in the list that can be acted on. The events go to the client that is bound.
class FakeToplevel
{
public:
    explicit FakeToplevel(wl_resource* resource) : m_resource(resource) {}

    FakeToplevel& title(const std::string& text);
    FakeToplevel& appID(const std::string& text);
    FakeToplevel& states(const std::vector<std::uint32_t>& numbers);
    /// Raw bytes, which need not be whole numbers.
    FakeToplevel& stateBytes(const std::string& bytes);
    FakeToplevel& parent(const FakeToplevel* window);
    FakeToplevel& done();
    void closed();

private:
    wl_resource* m_resource;
};

inline constexpr std::uint32_t minimizedState = 1;
inline constexpr std::uint32_t activatedState = 2;

/// The list that can be acted on, with a seat. One client.
class FakeToplevelManager
{
public:
    explicit FakeToplevelManager(FakeCompositor& compositor, std::uint32_t version = 3,
                                 bool hasSeat = true);
    FakeToplevelManager(const FakeToplevelManager&) = delete;
    FakeToplevelManager& operator=(const FakeToplevelManager&) = delete;
    ~FakeToplevelManager();

    /// The version that the client has bound; 0 for none.
    std::uint32_t boundVersion() const;
    /// Announces a window, of which nothing is said yet.
    FakeToplevel open();
    /// Announces one with all that belongs to it.
    FakeToplevel open(const std::string& title, const std::string& appID,
                      const std::vector<std::uint32_t>& states = {});
    void finish();
    /// The compositor offers it no more.
    void remove();

    /// "activate 0", "close 1", … with the windows' places in the order of announcement.
    QStringList requests;

private:
    struct Requests;

    wl_global* m_global;
    wl_global* m_seat = nullptr;
    wl_resource* m_bound = nullptr;
    int m_opened = 0;
};

/// A window in the list that has identifiers.
class FakeIdentifiedToplevel
{
public:
    explicit FakeIdentifiedToplevel(wl_resource* resource) : m_resource(resource) {}

    FakeIdentifiedToplevel& title(const std::string& text);
    FakeIdentifiedToplevel& appID(const std::string& text);
    FakeIdentifiedToplevel& identifier(const std::string& text);
    FakeIdentifiedToplevel& done();
    void closed();

private:
    wl_resource* m_resource;
};

class FakeIdentifiedToplevels
{
public:
    explicit FakeIdentifiedToplevels(FakeCompositor& compositor);
    FakeIdentifiedToplevels(const FakeIdentifiedToplevels&) = delete;
    FakeIdentifiedToplevels& operator=(const FakeIdentifiedToplevels&) = delete;
    ~FakeIdentifiedToplevels();

    bool isBound() const { return m_bound != nullptr; }
    FakeIdentifiedToplevel open(const std::string& title, const std::string& appID,
                                const std::string& identifier);

private:
    struct Requests;

    wl_global* m_global;
    wl_resource* m_bound = nullptr;
    int m_opened = 0;
};

} // namespace kelpa::test
