// SPDX-License-Identifier: GPL-3.0-or-later
#include "guiprompts.h"

#include <QApplication>
#include <QFileDialog>
#include <QMainWindow>
#include <QMessageBox>

namespace kestrel {

namespace {

QMessageBox::Icon boxIcon(Icon icon) {
    switch (icon) {
    case Icon::Critical:
        return QMessageBox::Critical;
    case Icon::Exclamation:
        return QMessageBox::Warning;
    case Icon::Information:
        return QMessageBox::Information;
    case Icon::Question:
        return QMessageBox::Question;
    case Icon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

QMessageBox::StandardButtons boxButtons(Buttons buttons) {
    switch (buttons) {
    case Buttons::Ok:
        return QMessageBox::Ok;
    case Buttons::OkCancel:
        return QMessageBox::Ok | QMessageBox::Cancel;
    case Buttons::YesNo:
    case Buttons::YesNoDefaultNo:
        return QMessageBox::Yes | QMessageBox::No;
    case Buttons::YesNoCancel:
        return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    }
    return QMessageBox::Ok;
}

// The window a box belongs over: the active one or, before the window manager has activated
// any (a message of the link's set-up right after start-up), the visible main window.
QWidget* dialogParent() {
    if (QWidget* active = QApplication::activeWindow())
        return active;
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w->isVisible() && qobject_cast<QMainWindow*>(w))
            return w;
    return nullptr;
}

} // namespace

Answer GuiPrompts::message(const QString& text, const QString& title, Icon icon, Buttons buttons) {
    QMessageBox box(boxIcon(icon), title, text, boxButtons(buttons), dialogParent());
    if (buttons == Buttons::YesNoDefaultNo)
        box.setDefaultButton(QMessageBox::No);
    switch (box.exec()) {
    case QMessageBox::Yes:
        return Answer::Yes;
    case QMessageBox::No:
        return Answer::No;
    case QMessageBox::Cancel:
        return Answer::Cancel;
    default:
        // Closing a box without a Cancel button by its frame counts as its first button.
        return buttons == Buttons::YesNo || buttons == Buttons::YesNoDefaultNo ? Answer::No
                                                                               : Answer::Ok;
    }
}

std::optional<QString> GuiPrompts::runFileDialog(const FileDialogOptions& options, bool save) {
    QFileDialog dialog(dialogParent(), options.title, options.startDir);
    dialog.setAcceptMode(save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    dialog.setNameFilter(options.pattern);
    dialog.setDefaultSuffix(options.defaultExt);
    // A preset such as "*.BKE" is the filter itself, not a name to propose.
    if (!options.presetName.contains(QLatin1Char('*')))
        dialog.selectFile(options.presetName);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    if (options.chosenFilter)
        *options.chosenFilter = dialog.selectedNameFilter();
    return dialog.selectedFiles().constFirst();
}

std::optional<QString> GuiPrompts::openFile(const FileDialogOptions& options) {
    return runFileDialog(options, false);
}

std::optional<QString> GuiPrompts::saveFile(const FileDialogOptions& options) {
    return runFileDialog(options, true);
}

} // namespace kestrel
