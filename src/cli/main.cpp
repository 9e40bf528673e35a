// SPDX-License-Identifier: GPL-3.0-or-later
// kestrelctl: the command line over the same libraries as the window.
#include "dispatch.h"
#include "i18n/language.h"

#include <QGuiApplication>

#include <cstdio>
#include <memory>

int main(int argc, char** argv) {
    using namespace kestrel::cli;
    // The command decides the application object: one that draws needs a GUI application, the
    // others must not, so the command line is read before either exists.
    QStringList words;
    for (int i = 1; i < argc; ++i)
        words.append(QString::fromLocal8Bit(argv[i]));
    Invocation inv = resolve(words);
    if (inv.action != Invocation::Run) {
        const QByteArray bytes = inv.text.toUtf8();
        std::fwrite(bytes.constData(), 1, size_t(bytes.size()),
                    inv.action == Invocation::Print ? stdout : stderr);
        return inv.action == Invocation::Print ? Ok : Usage;
    }

    std::unique_ptr<QCoreApplication> application;
    if (inv.command->draws) {
        // Fonts and paint devices without a display: the offscreen platform always suffices.
        qputenv("QT_QPA_PLATFORM", "offscreen");
        application = std::make_unique<QGuiApplication>(argc, argv);
    } else {
        application = std::make_unique<QCoreApplication>(argc, argv);
    }
    QCoreApplication::setOrganizationName(QString::fromLatin1(kestrel::kPublisher));
    QCoreApplication::setApplicationName(QString::fromLatin1(kestrel::kProgramKey));
    kestrel::InstallTranslations(kestrel::LanguageChoice());

    const Command& c = *inv.command;
    const QString label = QStringLiteral("kestrelctl ") + QString::fromLatin1(c.name) +
                          (c.sub ? QStringLiteral(" ") + QString::fromLatin1(c.sub) : QString()) +
                          QStringLiteral(": ");
    Env env(inv.dataDir);
    try {
        return checkOutput(c.run(env, *inv.args));
    } catch (const InputError& e) {
        err(label + QString::fromUtf8(e.what()));
        return Usage;
    } catch (const UsageError& e) {
        const QByteArray bytes = usageFailure(c, QString::fromUtf8(e.what())).toUtf8();
        std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stderr);
        return Usage;
    } catch (const std::exception& e) {
        err(label + QString::fromUtf8(e.what()));
        return Failure;
    }
}
