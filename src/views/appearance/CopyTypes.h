// The types of the interface's texts, registered with QML.
#pragma once

#include "text/CopyKey.h"
#include "text/CopyTable.h"

#include <QtQml/qqml.h>

namespace kelpa {

/// `CopyKey.NewGoal` and so on.
class CopyKeyForQml : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(CopyKey)
    QML_UNCREATABLE("It only holds the keys.")
    QML_EXTENDED_NAMESPACE(kelpa::copykey)
};

struct CopyTableForQml
{
    Q_GADGET
    QML_FOREIGN(kelpa::CopyTable)
    QML_VALUE_TYPE(copyTable)
};

} // namespace kelpa
