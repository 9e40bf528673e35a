// SPDX-License-Identifier: GPL-3.0-or-later
// The program's questions shown as real dialogs: message boxes and the file dialog.
#pragma once

#include "core/prompts.h"

class QWidget;

namespace kestrel {

class GuiPrompts : public Prompts {
public:
    Answer message(const QString& text, const QString& title, Icon icon, Buttons buttons) override;
    std::optional<QString> openFile(const FileDialogOptions& options) override;
    std::optional<QString> saveFile(const FileDialogOptions& options) override;

private:
    std::optional<QString> runFileDialog(const FileDialogOptions& options, bool save);
};

} // namespace kestrel
