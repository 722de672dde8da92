// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_WAVEFORM_SESSION_DUMP_H
#define OXACAPTURE_WAVEFORM_SESSION_DUMP_H

#include "oxacapture/waveform/sigrok_session.h"

#include <vector>

namespace OXA_CAPTURE {

/// A sigrok session as the text of a value change dump: a capture of one window without scopes,
/// whose samples are those that differ from the one before, and the last one. Channels of a
/// vector's bits are one variable. The text is made while it is read.
class SessionDump {
public:
    bool open(const QString& path); ///< on failure, `error` tells why

    /// Up to `size` bytes of the text; 0 at its end, -1 on failure, with `error`.
    qint64 read(char* data, qint64 size);

    const QString& error() const { return m_session.error(); }
    int percentRead() const { return m_session.percentRead(); }

private:
    struct Variable {
        QByteArray identifier;
        QList<int> bits; ///< of a sample, most significant first
        QByteArray last; ///< the value that is in the text
    };

    void declare();
    bool makeMore();
    void take(const char* sample);
    void addSample(qint64 number);
    void end();
    quint64 timeOf(qint64 number) const;

    SigrokSession m_session;
    std::vector<Variable> m_variables;
    QByteArray m_sampleId; // of the variable that changes at each sample in the text
    int m_exponent = 0; // of the time unit
    QByteArray m_bytes; // read, of samples that are not in the text
    QByteArray m_before; // the sample before
    qint64 m_taken = 0; // samples
    qint64 m_added = 0; // of these
    qint64 m_last = -1; // number of the last one of these
    bool m_isEnded = false;
    QByteArray m_text;
    int m_at = 0; // the next byte of the text
};

}

#endif
