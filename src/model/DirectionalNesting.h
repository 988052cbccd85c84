// Follows the directional controls of a text (Unicode's embeddings, overrides and isolates), so
// that none of them reaches into a text around it.
#pragma once

#include <QString>

#include <cstdint>
#include <vector>

namespace kelpa {

/// Is given the directional controls of one text, from its beginning on.
class DirectionalNesting
{
public:
    enum class Overrides : std::uint8_t { kept, dropped };

    explicit DirectionalNesting(Overrides overrides) : m_overrides(overrides) {}

    static bool isControl(char32_t character);

    /// Returns whether to keep a control: one that closes nothing within the text would close
    /// something around it.
    bool keeps(char32_t control);
    /// What closes the parts that are open, the innermost first.
    QString closers() const;

private:
    enum class Part : std::uint8_t { embedding, override, isolate };

    bool open(Part part);
    bool closeEmbedding();
    bool closeIsolate();
    bool isKept(Part part) const;

    Overrides m_overrides;
    std::vector<Part> m_open;
};

} // namespace kelpa
