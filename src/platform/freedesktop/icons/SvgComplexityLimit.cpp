#include "platform/freedesktop/icons/SvgComplexityLimit.h"

#include <QHash>
#include <QString>
#include <QXmlStreamReader>

#include <algorithm>
#include <cstddef>
#include <vector>

namespace kelpa {

namespace {

constexpr qsizetype maximalDrawingSize = 2 << 20;
constexpr std::size_t maximalNesting = 200;
constexpr std::size_t maximalRepetitions = 2000;
constexpr qint64 maximalShapes = 100'000;

/// An element and its descendants: how many there are, and which elements they repeat by `use`.
struct Part
{
    qint64 elements = 0;
    std::vector<QString> repeats;
    /// Shapes that it draws; negative until counted.
    qint64 shapes = -1;
    bool isBeingCounted = false;
};

class Drawing
{
public:
    bool read(const QByteArray& bytes);

    /// Whether the number of shapes stays within the limit.
    bool isBounded() { return count(m_parts.front()) <= maximalShapes; }

private:
    bool begin(const QXmlStreamReader& xml);
    qint64 count(Part& part);

    /// The first is the whole drawing; the others are the elements with an id.
    std::vector<Part> m_parts{1};
    QHash<QString, std::size_t> m_byID;
    /// The part of each open element; 0 for an element without an id.
    std::vector<std::size_t> m_open;
    std::size_t m_repetitions = 0;
};

bool Drawing::read(const QByteArray& bytes)
{
    QXmlStreamReader xml(bytes);
    while (!xml.atEnd()) {
        switch (xml.readNext()) {
        case QXmlStreamReader::StartElement:
            if (!begin(xml))
                return false;
            break;
        case QXmlStreamReader::EndElement:
            m_open.pop_back();
            break;
        case QXmlStreamReader::DTD:
            if (!xml.entityDeclarations().isEmpty())
                return false;
            break;
        default:
            break;
        }
    }
    return !xml.hasError() && m_parts.front().elements > 0;
}

bool Drawing::begin(const QXmlStreamReader& xml)
{
    const QXmlStreamAttributes attributes = xml.attributes();
    if (m_open.empty() && xml.name() != QStringLiteral("svg"))
        return false;
    std::size_t part = 0;
    if (const QString id = attributes.value(QStringLiteral("id")).toString(); !id.isEmpty()) {
        // Elements that share an id are counted together as one part.
        part = m_byID.value(id, m_parts.size());
        if (part == m_parts.size()) {
            m_parts.emplace_back();
            m_byID.insert(id, part);
        }
    }
    m_open.push_back(part);
    QString repeated;
    for (const QXmlStreamAttribute& attribute : attributes) {
        if (attribute.name() != QStringLiteral("href"))
            continue;
        const QString target = attribute.value().trimmed().toString();
        if (xml.name() == QStringLiteral("image") && !target.startsWith(QStringLiteral("data:")))
            return false;
        if (xml.name() == QStringLiteral("use")) {
            repeated = target.mid(1);
            ++m_repetitions;
        }
    }
    const auto enter = [&](Part& entered) {
        ++entered.elements;
        if (!repeated.isEmpty())
            entered.repeats.push_back(repeated);
    };
    enter(m_parts.front());
    for (const std::size_t open : m_open) {
        if (open != 0)
            enter(m_parts[open]);
    }
    return m_open.size() <= maximalNesting && m_repetitions <= maximalRepetitions &&
           m_parts.front().elements <= maximalShapes;
}

/// Saturates at one more than the maximum.
qint64 Drawing::count(Part& part)
{
    if (part.isBeingCounted)
        return maximalShapes + 1;
    if (part.shapes < 0) {
        part.isBeingCounted = true;
        qint64 shapes = part.elements;
        for (const QString& id : part.repeats) {
            if (shapes > maximalShapes)
                break;
            if (const auto target = m_byID.constFind(id); target != m_byID.cend())
                shapes += count(m_parts[*target]);
        }
        part.shapes = std::min(shapes, maximalShapes + 1);
        part.isBeingCounted = false;
    }
    return part.shapes;
}

} // namespace

bool isWithinSvgLimits(const QByteArray& bytes)
{
    if (bytes.size() > maximalDrawingSize)
        return false;
    Drawing drawing;
    return drawing.read(bytes) && drawing.isBounded();
}

} // namespace kelpa
