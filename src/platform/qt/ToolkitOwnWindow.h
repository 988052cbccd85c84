// Kelpa's own window where nobody but the toolkit knows it.
#pragma once

#include "platform/OwnWindow.h"

namespace kelpa {

class ToolkitOwnWindow final : public OwnWindow
{
public:
    /// Asks as far as the toolkit can. A compositor that guards the focus may only mark the window
    /// as wanting attention while the person types into another program.
    void requestFront(QWindow& window, const ActivationContext& context) override;
    /// Null: the toolkit does not tell whether other windows cover one.
    [[nodiscard]] std::unique_ptr<Subscription>
    watchOcclusion(QWindow& window, std::function<void(bool isOccluded)> changed) override;
};

} // namespace kelpa
