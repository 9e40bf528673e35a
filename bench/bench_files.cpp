// SPDX-License-Identifier: GPL-3.0-or-later
// Loading and saving all ten profiles against reading and writing the same files' bytes: the
// library's cost over the bare file system.
#include "core/appcontext.h"
#include "core/files.h"
#include "core/profiles.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QSaveFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

#include <vector>

using namespace kestrel;

namespace {

// A data folder holding ten profiles with every file present: Profiles.ini, 10 settings files,
// 100 bank files and 10 search-limit files, each channel and range with its own text.
class PopulatedFolder {
public:
    PopulatedFolder() {
        AppContext ctx(m_dir.path());
        MakeBanksDir(ctx);
        Load_Profiles(ctx);
        for (int p = 0; p < ProfileCount; ++p) {
            ProfileRec& profile = ctx.Profiles[p];
            profile.Name = p == 0 ? QStringLiteral("Main") : QStringLiteral("Profile %1").arg(p);
            profile.Changed = true;
            for (int b = 1; b <= BankCount; ++b) {
                profile.Banks[b].Changed = true;
                for (int c = 1; c <= ChansPerBank; ++c) {
                    ChannelRec& ch = profile.Banks[b].Chans[c];
                    ch.Freq = 30'000'000.0 + 12'500.0 * (p * 200 + b * 20 + c);
                    ch.Desc = QStringLiteral("Profile %1 bank %2 slot %3").arg(p).arg(b).arg(c);
                    ch.Priority = c % 3 == 0;
                }
            }
            for (int i = 1; i <= SearchCount; ++i)
                profile.Searches[i].Desc = QStringLiteral("Range %1 of %2").arg(i).arg(p);
        }
        Save_Profiles(ctx);
        QDirIterator it(m_dir.path(), QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            const QString path = it.next();
            QFile f(path);
            f.open(QIODevice::ReadOnly);
            m_files.push_back({path, f.readAll()});
        }
    }

    QString path() const { return m_dir.path(); }
    struct File {
        QString path;
        QByteArray bytes;
    };
    const std::vector<File>& files() const { return m_files; }

private:
    QTemporaryDir m_dir;
    std::vector<File> m_files;
};

PopulatedFolder& folder() {
    static PopulatedFolder f;
    return f;
}

void LoadAllProfiles(benchmark::State& state) {
    AppContext ctx(folder().path());
    for (auto _ : state) {
        Load_Profiles(ctx);
        benchmark::DoNotOptimize(ctx.Profiles[9].Banks[10].Chans[20].Freq);
    }
    if (ctx.errors.reportCount() != 0)
        state.SkipWithError("errors while loading");
    state.counters["files"] = double(folder().files().size());
}

void ReadRawFiles(benchmark::State& state) {
    for (auto _ : state) {
        for (const auto& file : folder().files()) {
            QFile f(file.path);
            f.open(QIODevice::ReadOnly);
            QByteArray bytes = f.readAll();
            benchmark::DoNotOptimize(bytes.data());
        }
    }
    state.counters["files"] = double(folder().files().size());
}

void SaveAllProfiles(benchmark::State& state) {
    AppContext ctx(folder().path());
    Load_Profiles(ctx);
    for (auto _ : state) {
        state.PauseTiming();
        for (int p = 0; p < ProfileCount; ++p) {
            ctx.Profiles[p].Changed = true;
            for (int b = 1; b <= BankCount; ++b)
                ctx.Profiles[p].Banks[b].Changed = true;
        }
        state.ResumeTiming();
        Save_Profiles(ctx);
    }
    if (!ctx.failedWrites.isEmpty() || ctx.errors.reportCount() != 0)
        state.SkipWithError("errors while saving");
}

void WriteRawFiles(benchmark::State& state) {
    for (auto _ : state) {
        for (const auto& file : folder().files()) {
            QSaveFile f(file.path);
            f.open(QIODevice::WriteOnly);
            f.write(file.bytes);
            f.commit();
        }
    }
}

} // namespace

BENCHMARK(LoadAllProfiles)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadRawFiles)->Unit(benchmark::kMillisecond);
BENCHMARK(SaveAllProfiles)->Unit(benchmark::kMillisecond);
BENCHMARK(WriteRawFiles)->Unit(benchmark::kMillisecond);
