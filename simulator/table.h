// Reading a row of a table by the platform's operation codes.
#pragma once

#include "simulator/call.h"

namespace switchsim {

/// The row whose key equals `key` (exact) or the first whose key is greater; null if there is none.
template <class Table>
const typename Table::value_type* find_row(const Table& table, bool exact, const typename Table::key_type& key) {
    const auto row = exact ? table.find(key) : table.upper_bound(key);
    return row == table.end() ? nullptr : &*row;
}

/// Hands out the row, or fails if there is none.
template <class Record, class Row>
int hand_out_row(Record** out, const Row* row) {
    return row ? hand_out(out, row->second) : failed;
}

} // namespace switchsim
