// SPDX-License-Identifier: Apache-2.0
#include "synthesis_fixture.h"

#include "support/files.h"

#include <norvosyn/request_keys.h>

#include <QDir>
#include <QFile>
#include <QMultiMap>
#include <QRegularExpression>

using namespace NorvoSyn;

SynthesisFixture::SynthesisFixture(const QString& subdirectory)
    : proxy(nullptr)
    , m_root(m_dir.filePath(subdirectory))
{
    qunsetenv("OXA_SYNTHESIS_ENGINE");
    qunsetenv("OXA_SYNTHESIS_TIMEOUT");
    QDir().mkpath(m_root);
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    QMultiMap<QString, QVariant> options;
    options.insert(OPT_INCLUDE_PATH, m_root);
    options.insert(OPT_INCLUDE_PATH, path("installed"));
#else
    QVariantMap options;
    options.insert(OPT_INCLUDE_PATH, QStringList {m_root, path("installed")});
#endif
    options.insert(OPT_OUTPUT_VERILOG, output());
    options.insert(OPT_DISABLE_IO, "1");
    request[WORK_DIR] = m_root;
    request[PROJECT_NAME] = "oxa_test";
    request[ARG_FILE] = QVariantList();
    request[ARG_OPTION] = QVariantMap(options);
    request[INI_CONFIG] = QStringList {"RESOURCE_CHECK=false"};
    setDevice("QX2A-18");
}

void SynthesisFixture::write(const QString& name, const QByteArray& text) const
{
    QDir().mkpath(QFileInfo(path(name)).path());
    ::writeFile(path(name), text);
}

QByteArray SynthesisFixture::read(const QString& name) const { return bytesOf(path(name)); }

void SynthesisFixture::addSource(const QString& name, const QByteArray& text)
{
    write(name, text);
    QVariantList files = request[ARG_FILE].toList();
    files << QVariantMap {
        {ARG_FILE_PATH, path(name)  },
        {ARG_FILE_TYPE, TYPE_VERILOG}
    };
    request[ARG_FILE] = files;
}

void SynthesisFixture::set(const QString& key, const QVariant& value)
{
    if (const QString inner = key.section('/', 1); !inner.isEmpty()) {
        QVariantMap map = request[key.section('/', 0, 0)].toMap();
        map[inner] = value;
        request[key.section('/', 0, 0)] = map;
    } else {
        request[key] = value;
    }
}

void SynthesisFixture::setDevice(const QString& name)
{
    request[ARG_DEVICE] = QVariantMap {
        {ARG_DEVICE_PN,      ""  },
        {ARG_DEVICE_NAME,    name},
        {ARG_DEVICE_PACKAGE, ""  },
        {ARG_DEVICE_SPEED,   ""  },
    };
}

void SynthesisFixture::setEngine(const QByteArray& script) const
{
    qputenv("OXA_SYNTHESIS_ENGINE", writeProgram(path("engine"), script).toUtf8());
}

int SynthesisFixture::cells(const char* type) const
{
    const QString netlist = read("out.v");
    return netlist.count(QRegularExpression(QString("(?m)^  %1 (#\\(|\\S)").arg(type)));
}
