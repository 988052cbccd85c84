// Chooses hardware or software rendering.
#pragma once

namespace kelpa {

/// Renders in software where there is no graphics device: emulated OpenGL would be slower and use
/// more memory. Qt's environment variables take precedence. Call before the first window is
/// created.
void chooseRenderBackend();

} // namespace kelpa
