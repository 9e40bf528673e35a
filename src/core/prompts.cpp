// SPDX-License-Identifier: GPL-3.0-or-later
#include "prompts.h"

#include <cstdio>

namespace kestrel {

Answer ScriptedPrompts::message(const QString& text, const QString& title, Icon icon,
                                Buttons buttons) {
    m_messages.append({text, title, icon, buttons});
    if (m_echo)
        std::fprintf(stderr, "%s\n", qPrintable(text));
    Answer a = m_answers.isEmpty() ? m_default : m_answers.takeFirst();
    // An answer the box does not offer falls back to the box's first button.
    const bool yesNo = buttons == Buttons::YesNo || buttons == Buttons::YesNoCancel ||
                       buttons == Buttons::YesNoDefaultNo;
    if (yesNo && a == Answer::Ok)
        a = Answer::Yes;
    if (!yesNo && (a == Answer::Yes || a == Answer::No))
        a = buttons == Buttons::Ok ? Answer::Ok : (a == Answer::Yes ? Answer::Ok : Answer::Cancel);
    return a;
}

std::optional<QString> ScriptedPrompts::openFile(const FileDialogOptions& options) {
    m_dialogs.append(options);
    return m_files.isEmpty() ? std::nullopt : m_files.takeFirst();
}

std::optional<QString> ScriptedPrompts::saveFile(const FileDialogOptions& options) {
    m_dialogs.append(options);
    if (options.chosenFilter && !m_filters.isEmpty())
        *options.chosenFilter = m_filters.takeFirst();
    return m_files.isEmpty() ? std::nullopt : m_files.takeFirst();
}

} // namespace kestrel
