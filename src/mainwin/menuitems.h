// SPDX-License-Identifier: GPL-3.0-or-later
// The main window's menu items, named by an enum so that code and tests reach an item without
// spelling its caption or object name; the object names stay for tools that inspect widgets.
#pragma once

#include <QString>
#include <optional>

namespace kestrel {

enum class MenuId {
    // File
    LoadProfile,
    SaveProfile,
    SaveProfileAs,
    LoadBank,
    SaveBank,
    SaveBankAs,
    LoadSearch,
    SaveSearch,
    SaveSearchAs,
    CsvImport,
    CsvExport,
    WebImport,
    Exit,
    // Edit
    Undo,
    Redo,
    Cut,
    Copy,
    Paste,
    SelectAll,
    ClearSelected,
    UseDefaults,
    ClearCurrBank,
    ClearSearch,
    DefaultBank,
    DefaultLimits,
    SetFactory,
    ClearBanks,
    OrganizeBanks,
    OrganizeChans,
    // View
    ShowScanBanks,
    ShowService,
    ShowAllChan,
    NextBank,
    PreviousBank,
    EditHistory,
    // Options
    CableType,
    ComPort,
    DebugComm,
    DatabaseAddress,
    PrintBank,
    // Scanner
    UploadAllBanks,
    UploadCurrBank,
    UploadSrchBank,
    // Help
    HomePage,
    DBaseSite,
    DisplayErrors,
    About,
    Count
};

// The item's object name ("LoadBankMenuItem").
QString MenuItemName(MenuId id);
// The item an object name (or one of the older names other parts of the program used) stands
// for.
std::optional<MenuId> MenuIdByName(QStringView name);

} // namespace kestrel
