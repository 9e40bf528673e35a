// SPDX-License-Identifier: GPL-3.0-or-later
// kestrelctl rr: the family head. Its options (address, login, envelope) are accepted by every
// rr sub-command; each sub-command is its own cmd_rr_*.cpp.
#include "rrsession.h"

namespace kestrel::cli {

namespace {

const CommandRegistration
    reg({"rr",
         nullptr,
         "Browse the frequency database (RadioReference or a local copy) and import from it; "
         "one record a line, ids first, tab-separated",
         rrFamilyOptions(),
         {},
         nullptr,
         false,
         {{kRRLoginRefused, "the service refused the user name or password"}}});

} // namespace
} // namespace kestrel::cli
