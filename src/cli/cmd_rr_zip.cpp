// SPDX-License-Identifier: GPL-3.0-or-later
// kestrelctl rr zip ZIP: where a zip code lies (state and county ids), the import window's
// shortcut to a county.
#include "rrsession.h"

namespace kestrel::cli {

namespace {

int run(Env& env, const Args& args) {
    const qint32 zip = idArgument(args, 0, "ZIP");
    RRSession rr(env, args);
    if (rr.open()) {
        if (rr.client().getZipcodeInfo(zip))
            printRecord(rr.client().ZipcodeInfo);
        else if (!rr.failed())
            err(QStringLiteral("kestrelctl rr zip: the service knows no zip code ") +
                args.positional().first());
    }
    return rr.finish();
}

const CommandRegistration reg({"rr",
                               "zip",
                               "Print a zip code's place: zip, latitude, longitude, city, "
                               "state id, county id",
                               {},
                               {{"ZIP", "The zip code"}},
                               run});

} // namespace
} // namespace kestrel::cli
