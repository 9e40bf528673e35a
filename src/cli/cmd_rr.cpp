// SPDX-License-Identifier: GPL-3.0-or-later
// kestrelctl rr: the family head. Its options (address, login, envelope) are accepted by every
// rr sub-command; each sub-command is its own cmd_rr_*.cpp.
#include "rrsession.h"

namespace kestrel::cli {

namespace {

const CommandRegistration
    reg({"rr",
         nullptr,
         "Browse the RadioReference frequency database (or a local copy) and import from it. "
         "Output: one record a line, ids first, columns separated by tabs",
         rrFamilyOptions(),
         {},
         nullptr});

} // namespace
} // namespace kestrel::cli
