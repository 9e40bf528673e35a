// SPDX-License-Identifier: GPL-3.0-or-later
// kestrelctl profiles: one line per profile with its file base names.
#include "cli.h"

namespace kestrel::cli {

namespace {

int run(Env& env, const Args&) {
    AppContext& ctx = env.load();
    for (int p = 0; p < ProfileCount; ++p) {
        const ProfileRec& profile = ctx.Profiles[p];
        QStringList fields{QString::number(p), profile.Name, profile.SrchName};
        for (int b = 1; b <= BankCount; ++b)
            fields.append(profile.Banks[b].FileName);
        out(fields.join(QLatin1Char('\t')));
    }
    return env.finish();
}

const CommandRegistration reg(
    {"profiles", nullptr, "List the profiles with their search and bank file names", {}, {}, run});

} // namespace
} // namespace kestrel::cli
