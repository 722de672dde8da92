#ifndef OXAUTILS_CHECK_STATIC_TABLE_H
#define OXAUTILS_CHECK_STATIC_TABLE_H

#include "oxautils/check/expression_tokens.h"
#include "oxautils/encoding/truth_table.h"

namespace OXA {

/// What a static expression without complaints gives for every combination of the units that it
/// names, in no particular order.
TruthTable staticTable(const QList<Token>& tokens);

}

#endif
