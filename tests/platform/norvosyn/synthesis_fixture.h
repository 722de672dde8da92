// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_NORVOSYN_SYNTHESIS_FIXTURE_H
#define TESTS_NORVOSYN_SYNTHESIS_FIXTURE_H

#include <norvosyn/qx_synthesis_sync_proxy.h>

#include <QTemporaryDir>

/// A proxy with a directory of its own, and a request that a test can change.
class SynthesisFixture {
public:
    explicit SynthesisFixture(const QString& subdirectory = "work");

    QString path(const QString& name) const { return m_root + '/' + name; }
    QString output() const { return path("out.v"); }

    void write(const QString& name, const QByteArray& text) const;
    QByteArray read(const QString& name) const;

    /// Writes `text` as the source `name` and appends it to the request.
    void addSource(const QString& name, const QByteArray& text);

    /// Replaces one key of the request, or of the map in it that `key` names before a slash
    /// ("device/pn").
    void set(const QString& key, const QVariant& value);

    void setDevice(const QString& name);

    /// Uses a shell script as the engine.
    void setEngine(const QByteArray& script) const;

    int run() { return proxy.run(request); }
    QString messages() const { return proxy.messages().join('\n'); }

    /// How many cells of `type` the netlist has.
    int cells(const char* type) const;

    QVariantMap request;
    NorvoSyn::QxSynthesisSyncProxy proxy;

private:
    QTemporaryDir m_dir;
    QString m_root;
};

#endif
