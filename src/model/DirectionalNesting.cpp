#include "model/DirectionalNesting.h"

#include <QChar>

#include <algorithm>
#include <iterator>

namespace kelpa {

namespace {

constexpr char16_t leftToRightEmbedding = 0x202A;
constexpr char16_t rightToLeftEmbedding = 0x202B;
constexpr char16_t popDirectional = 0x202C;
constexpr char16_t leftToRightOverride = 0x202D;
constexpr char16_t rightToLeftOverride = 0x202E;
constexpr char16_t leftToRightIsolate = 0x2066;
constexpr char16_t popIsolate = 0x2069;

} // namespace

bool DirectionalNesting::isControl(char32_t character)
{
    return (character >= leftToRightEmbedding && character <= rightToLeftOverride) ||
           (character >= leftToRightIsolate && character <= popIsolate);
}

bool DirectionalNesting::keeps(char32_t control)
{
    switch (control) {
    case leftToRightEmbedding:
    case rightToLeftEmbedding:
        return open(Part::embedding);
    case leftToRightOverride:
    case rightToLeftOverride:
        return open(Part::override);
    case popDirectional:
        return closeEmbedding();
    case popIsolate:
        return closeIsolate();
    default:
        return open(Part::isolate);
    }
}

QString DirectionalNesting::closers() const
{
    QString text;
    for (auto part = m_open.rbegin(); part != m_open.rend(); ++part) {
        if (isKept(*part))
            text += QChar(*part == Part::isolate ? popIsolate : popDirectional);
    }
    return text;
}

bool DirectionalNesting::open(Part part)
{
    m_open.push_back(part);
    return isKept(part);
}

bool DirectionalNesting::closeEmbedding()
{
    if (m_open.empty() || m_open.back() == Part::isolate)
        return false;
    const Part closed = m_open.back();
    m_open.pop_back();
    return isKept(closed);
}

/// Also ends the embeddings that were opened within the isolate.
bool DirectionalNesting::closeIsolate()
{
    const auto opened = std::find(m_open.rbegin(), m_open.rend(), Part::isolate);
    if (opened == m_open.rend())
        return false;
    m_open.erase(std::prev(opened.base()), m_open.end());
    return true;
}

bool DirectionalNesting::isKept(Part part) const
{
    return part != Part::override || m_overrides == Overrides::kept;
}

} // namespace kelpa
