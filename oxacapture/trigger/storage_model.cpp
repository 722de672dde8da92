// SPDX-License-Identifier: Apache-2.0
#include "oxacapture/trigger/storage_model.h"

namespace OXA_CAPTURE {

bool StorageModel::take(
    const quint64* value, const quint64* before, int words, quint32 outputs, bool always)
{
    bool stored = all() || always || m_starts
        || (m_setup.gapBits > 0 && m_passed == (qint64(1) << m_setup.gapBits) - 1)
        || (needsOutputs() && m_setup.when.at(outputs));
    for (int word = 0; m_setup.keep == OXA::CoreStorage::Changes && word < words; ++word)
        stored = stored || ((value[word] ^ before[word]) & m_setup.watch[size_t(word)]) != 0;
    m_passed = stored ? 0 : m_passed + 1;
    m_starts = false;
    return stored;
}

}
