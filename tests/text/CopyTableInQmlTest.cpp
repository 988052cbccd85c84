// A view's binding on the texts follows the language.
#include "text/CopyTable.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>

#include <memory>

namespace kelpa {

class TableHolder : public QObject
{
    Q_OBJECT
    Q_PROPERTY(kelpa::CopyTable table READ table NOTIFY tableChanged)

public:
    CopyTable table() const { return m_table; }
    void setLanguage(AppLanguage language)
    {
        m_table = CopyTable(language, KeyNames::withSuper());
        Q_EMIT tableChanged();
    }

Q_SIGNALS:
    void tableChanged();

private:
    CopyTable m_table{AppLanguage::english, KeyNames::withSuper()};
};

namespace {

/// An object whose property `shown` is bound to `expression`, in which `copy` holds the table.
struct Binding
{
    explicit Binding(const char* expression)
    {
        qmlRegisterUncreatableMetaObject(copykey::staticMetaObject, "Test", 1, 0, "CopyKey",
                                         QStringLiteral("an enumeration"));
        engine.rootContext()->setContextProperty(QStringLiteral("copy"), &copy);
        QQmlComponent component(&engine);
        component.setData(
            QByteArray("import QtQml\nimport Test\nQtObject { property string shown: ") +
                expression + " }",
            QUrl());
        object.reset(component.create());
        EXPECT_NE(object, nullptr) << qPrintable(component.errorString());
    }

    QString shown() const { return object->property("shown").toString(); }

    int argc = 0;
    QCoreApplication application{argc, nullptr};
    TableHolder copy;
    QQmlEngine engine;
    std::unique_ptr<QObject> object;
};

TEST(CopyTableInQml, A_text_is_asked_for_by_the_name_of_its_key)
{
    const Binding binding("copy.table.text(CopyKey.DoubleTapHint)");
    EXPECT_EQ(binding.shown(),
              QStringLiteral("Press Super twice to bring Kelpa forward instantly"));
}

TEST(CopyTableInQml, A_binding_follows_the_language)
{
    Binding binding("copy.table.text(CopyKey.NewGoal)");
    EXPECT_EQ(binding.shown(), QStringLiteral("New goal"));
    binding.copy.setLanguage(AppLanguage::korean);
    EXPECT_EQ(binding.shown(), QStringLiteral("새 목표"));
    binding.copy.setLanguage(AppLanguage::french);
    EXPECT_EQ(binding.shown(), QStringLiteral("Nouvel objectif"));
}

TEST(CopyTableInQml, A_binding_on_a_composed_text_follows_the_language)
{
    Binding binding("copy.table.selectWindowsTitle('A') + copy.table.windowCount(3)");
    EXPECT_EQ(binding.shown(), QStringLiteral("Add windows to “A”3 windows"));
    binding.copy.setLanguage(AppLanguage::german);
    EXPECT_EQ(binding.shown(), QStringLiteral("Fenster zu „A“ hinzufügen3 Fenster"));
}

} // namespace
} // namespace kelpa

#include "CopyTableInQmlTest.moc"
