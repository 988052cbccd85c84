// How the interface is drawn.
#pragma once

namespace kelpa {

/// Draws with the processor where there is no graphics device to draw with: emulated OpenGL would
/// be slower and hold more memory. What the environment asks of Qt for wins. To be called before
/// the first window is made.
void chooseRenderBackend();

} // namespace kelpa
