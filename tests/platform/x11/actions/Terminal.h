// A program with windows, in a process of its own.
#pragma once

#include "model/Identifiers.h"
#include "support/desktop/Programs.h"
#include "support/desktop/WaitUntil.h"

#include <QFile>

#include <gtest/gtest.h>

namespace kelpa::test {

/// A terminal that runs a command that does not end.
class Terminal
{
public:
    Terminal(const QByteArray& display, const QString& title)
        : m_program(display, QStringLiteral("xterm"),
                    {QStringLiteral("-T"), title, QStringLiteral("-e"), QStringLiteral("cat")})
    {
        // A terminal ignores the hang-up until its command has started, and would miss a request to
        // close.
        const auto contents = [](const QString& path) {
            QFile file(path);
            return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed() : QByteArray();
        };
        EXPECT_TRUE(waitUntil([&] {
            const QByteArray child =
                contents(QStringLiteral("/proc/%1/task/%1/children").arg(m_program.processID()));
            return contents(QStringLiteral("/proc/%1/comm").arg(QString::fromLatin1(child))) ==
                   "cat";
        }));
    }

    ProcessID process() const { return static_cast<ProcessID>(m_program.processID()); }

private:
    Program m_program;
};

} // namespace kelpa::test
