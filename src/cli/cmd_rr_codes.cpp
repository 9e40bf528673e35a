// SPDX-License-Identifier: GPL-3.0-or-later
// kestrelctl rr codes: the database's code tables, which give the numbers in the other
// commands' output their names.
#include "rrsession.h"

namespace kestrel::cli {

namespace {

int run(Env& env, const Args& args) {
    RRSession rr(env, args);
    if (!rr.open())
        return rr.finish();
    RRClient& c = rr.client();
    // Each table is printed as it arrives; the first failure ends the command.
    const auto table = [&](bool ok, const auto& records, const QString& kind) {
        if (ok)
            printRecords(records, {kind});
        return !rr.failed();
    };
    // Id 0 (code "0", as the window's login sends it) asks for the whole table.
    table(c.getMode(0), c.Modes, QStringLiteral("mode")) &&
        table(c.getTag(0), c.Tags, QStringLiteral("tag")) &&
        table(c.getTrsType(0), c.TrsTypes, QStringLiteral("type")) &&
        table(c.getTrsFlavor(0), c.TrsFlavors, QStringLiteral("flavor")) &&
        table(c.getTrsVoice(0), c.TrsVoices, QStringLiteral("voice")) &&
        table(c.fccGetRadioServiceCode(QStringLiteral("0")), c.RadioServiceCodes,
              QStringLiteral("service"));
    return rr.finish();
}

const CommandRegistration
    reg({"rr",
         "codes",
         "Print the code tables, each line led by its table: mode, tag, type (trunked system "
         "types), flavor, voice, service (radio service codes)",
         {},
         {},
         run});

} // namespace
} // namespace kestrel::cli
