#include "shell/ShortcutTexts.h"

#include "text/KelpaCopy.h"

namespace kelpa {

GlobalShortcuts::Descriptions shortcutDescriptions(AppLanguage language)
{
    return {{GlobalShortcut::bringForward, KelpaCopy::text(CopyKey::BringKelpaForward, language)},
            {GlobalShortcut::newTodo, KelpaCopy::text(CopyKey::NewTodo, language)}};
}

} // namespace kelpa
