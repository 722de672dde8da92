// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_TARGET_ANALYZER_CLIENT_H
#define OXACAPTURE_TARGET_ANALYZER_CLIENT_H

#include "oxacapture/target/core_identity.h"
#include "oxacapture/target/core_status.h"
#include "oxacapture/target/jtag_link.h"

#include <QHash>

namespace OXA_CAPTURE {

/// The commands of a core (docs/jtag-protocol.md). Each takes effect at the next sample.
enum class CoreCommand { Arm = 0b011100, Stop = 0b110001, Force = 0b000111 };

/// Reads and writes the cores of one target by their JTAG protocol. A corrupted answer is detected
/// and read again; a corrupted write is detected and written again.
class OXACAPTURE_EXPORT AnalyzerClient {
public:
    /// `instruction` selects the cores' data register in the device.
    AnalyzerClient(JtagLink& link, BitString instruction);

    /// Resets the test access port and selects the cores, without changing what they do.
    bool begin();

    /// Finds all cores; a target without any is an error.
    bool discover(std::vector<CoreIdentity>& cores);

    bool readFingerprint(int core, quint32& fingerprint); ///< `core` is a position
    /// The sums of names that the core was built with (`OXA::nameSums`); empty when it was built
    /// without them.
    bool readNameSums(const CoreIdentity& core, QList<quint32>& sums);
    /// TCK has at least `delay` cycles more before the status is read.
    bool readStatus(const CoreIdentity& core, CoreStatus& status, int delay = 0);
    bool command(int core, CoreCommand command); ///< sends it to the core at a position

    /// The first `words` words of a core at rest, one after the other. A core that can take more
    /// than one window answers about memory and windows in a run, too: those of complete windows.
    bool readMemory(const CoreIdentity& core, qint64 words, BitString& memory);
    /// The same words of a Standard core, without their marks.
    bool readSamples(const CoreIdentity& core, qint64 words, BitString& samples);
    /// The first words about the windows of a core at rest, of `CoreIdentity::windowBits` each.
    bool readWindows(const CoreIdentity& core, qint64 windows, BitString& words);

    /// Writes what a core at rest waits for and captures; false also when the core is not built for
    /// it.
    bool writeSettings(const CoreIdentity& core, const TriggerSetup& setup);
    /// Changes the expressions of a core at rest with dynamic ones.
    bool writeTables(const CoreIdentity& core, const TriggerSetup& setup);

    /// Names the core at `position` in errors; one without a name is "core at position N".
    void setName(int position, const QString& name) { m_names.insert(position, name); }

    /// How often a read was repeated so far, because its answer was damaged or missing.
    int repeats() const { return m_repeats; }

    /// Why the last call failed.
    const QString& error() const { return m_error; }

private:
    enum class Answer { Whole, Damaged, None };

    bool fail(int core, const QString& error);
    bool select(int core);
    bool probe(int core, bool& present);
    bool readIdentity(int core, CoreIdentity& identity);
    bool readWords(const CoreIdentity& core, int reg, qint64 words, int wordBits, BitString& data);
    bool scan(int core, int reg, const BitString& out, BitString& in);
    bool tryRead(int core, int reg, int bits, BitString& data, Answer& answer, int delay = 0);
    bool read(int core, int reg, int bits, BitString& data, int delay = 0);
    bool write(int core, int reg, const BitString& data);

    JtagLink& m_link;
    BitString m_instruction;
    QHash<int, QString> m_names;
    int m_repeats = 0;
    QString m_error;
};

}

#endif
