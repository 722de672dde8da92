// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_APPS_OXA_CALLS_H
#define TESTS_APPS_OXA_CALLS_H

#include "support/files.h"
#include "support/oxa_program.h"

#include <QTemporaryDir>

/// Calls of oxa in a directory of a test's own.
class OxaCalls {
public:
    const QString uart = OXA_SOURCE_DIR "/examples/uart/uart.oxa";

    QString path(const QString& name) const { return m_dir.filePath(name); }

    /// The words of a call: UART stands for the example, ON for a part, DIR for the directory, LIST
    /// for what makes `oxa generate` print its list.
    QStringList words(QString call) const
    {
        call.replace("UART", uart).replace(" ON", " --part QX1N-9LV-QFN88-C6");
        call.replace("LIST", "--no-synthesis --work-dir DIR/list");
        return call.replace("DIR", m_dir.path()).split(' ', Qt::SkipEmptyParts);
    }

    Result run(const QString& call, const QStringList& environment = {}) const
    {
        return oxa(words(call), environment);
    }

    /// A file of the example with `from` replaced by `to`.
    QString changed(const QString& name, const QByteArray& from, const QByteArray& to) const
    {
        QByteArray content = bytesOf(uart);
        if (!content.contains(from))
            qFatal("no %s in the example", from.constData());
        return writeFile(path(name), content.replace(from, to));
    }

private:
    QTemporaryDir m_dir;
};

#endif
