// A board with a goal, and what exports and imports meet.
#pragma once

#include "store/BoardTransfer.h"
#include "support/StoreFixture.h"
#include "support/TransferFakes.h"
#include "text/KelpaCopy.h"
#include "views/board/BoardController.h"

namespace kelpa::test {

class TransferFixture : public StoreFixture
{
protected:
    TransferFixture()
    {
        store().setLanguage(AppLanguage::english);
        garden = makeGoal(QStringLiteral("Garden"));
        makeTodo(garden, QStringLiteral("Dig"));
        controller.exporting()->setParts(parts);
        controller.importing()->setParts(parts);
    }

    QString problemText(int key) const
    {
        return key < 0 ? QString()
                       : KelpaCopy::text(static_cast<CopyKey>(key), AppLanguage::english);
    }

    GoalID garden;
    MemoryFiles files;
    KeepingBackups backups;
    FakeFileDialogs dialogs;
    BoardTransfer transfer{store(), backups, files, scheduler};
    const TransferParts parts{transfer, dialogs, files, scheduler, QStringLiteral("/home/ada")};
    BoardController controller{store()};
};

} // namespace kelpa::test
