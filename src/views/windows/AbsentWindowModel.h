// The windows that a goal had and that are not there.
#pragma once

#include "model/RememberedWindow.h"
#include "text/AppLanguage.h"
#include "views/models/RowListModel.h"

#include <QString>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kelpa {

struct AbsentWindowRow
{
    WindowID id = 0;
    /// For the icon.
    QString applicationID;
    /// As shown, in a single line; so is the title.
    QString ownerName;
    QString title;
    /// When it was there last.
    QString lastSeen;

    WindowID key() const { return id; }

    friend bool operator==(const AbsentWindowRow&, const AbsentWindowRow&) = default;
};

class AbsentWindowModel : public RowListModel<AbsentWindowRow>
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The controller of the memory has it.")

public:
    using RowListModel<AbsentWindowRow>::RowListModel;

    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    void setWindows(const QList<RememberedWindow>& windows, AppLanguage language);
};

} // namespace kelpa
