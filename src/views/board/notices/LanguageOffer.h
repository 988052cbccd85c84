// The offer to go on in another language, on a board for which nobody has chosen one yet.
#pragma once

#include "text/AppLanguage.h"

#include <QList>
#include <QObject>
#include <QStringList>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kelpa {

class WindowStore;

/// Follows a store. Main thread.
class LanguageOffer : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The board has it.")

    /// False once a language is chosen, by whatever means.
    Q_PROPERTY(bool isOpen READ isOpen NOTIFY isOpenChanged)
    /// What is offered, each in its own language: the desktop's language or, where Kelpa does not
    /// speak it, every language.
    Q_PROPERTY(QStringList texts READ texts CONSTANT)
    /// The keys that take them.
    Q_PROPERTY(QStringList keys READ keys CONSTANT)

public:
    /// `store` outlives the offer. `preferred` are the BCP 47 tags of the desktop's languages, the
    /// dearest first.
    LanguageOffer(WindowStore& store, const QStringList& preferred);

    bool isOpen() const;
    QStringList texts() const;
    QStringList keys() const;
    /// Takes one of `texts`; any other index does nothing.
    Q_INVOKABLE void take(int index);

Q_SIGNALS:
    void isOpenChanged();
    /// The person has taken one of the languages here.
    void taken();

private:
    WindowStore& m_store;
    QList<AppLanguage> m_languages;
};

} // namespace kelpa
