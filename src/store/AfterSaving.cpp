#include "store/AfterSaving.h"

#include "store/WindowStore.h"

#include <utility>

namespace kelpa {

AfterSaving::AfterSaving(WindowStore& store) : m_store(store)
{
    connect(&store, &WindowStore::savingEnded, this, &AfterSaving::check);
}

void AfterSaving::start(Then then)
{
    m_then = std::move(then);
    m_store.save();
    check();
}

void AfterSaving::check()
{
    const SaveProgress progress = m_store.saveProgress();
    if (!m_then || progress == SaveProgress::underWay)
        return;
    const Then then = std::exchange(m_then, {});
    then(progress == SaveProgress::saved);
}

} // namespace kelpa
