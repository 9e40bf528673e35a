// SPDX-License-Identifier: GPL-3.0-or-later
#include "menuitems.h"

#include <array>

namespace kestrel {

namespace {

// In the order of MenuId.
constexpr std::array<const char*, int(MenuId::Count)> kNames = {"LoadProfileMenuItem",
                                                                "SaveProfileMenuItem",
                                                                "SaveProfileAsMenuItem",
                                                                "LoadBankMenuItem",
                                                                "SaveBankMenuItem",
                                                                "SaveBankAsMenuItem",
                                                                "LoadSearchMenuItem",
                                                                "SaveSearchMenuItem",
                                                                "SaveSearchAsMenuItem",
                                                                "CsvImportMenuItem",
                                                                "CsvExportMenuItem",
                                                                "WebImportMenuItem",
                                                                "ExitMenuItem",
                                                                "UndoMenuItem",
                                                                "RedoMenuItem",
                                                                "CutMenuItem",
                                                                "CopyMenuItem",
                                                                "PasteMenuItem",
                                                                "SelectAllMenuItem",
                                                                "ClearSelectedMenuItem",
                                                                "UseDefaultsMenuItem",
                                                                "ClearCurrBankMenuItem",
                                                                "ClearSearchMenuItem",
                                                                "DefaultBankMenuItem",
                                                                "DefaultLimitsMenuItem",
                                                                "SetFactoryMenuItem",
                                                                "ClearBanksMenuItem",
                                                                "OrganizeBanksMenuItem",
                                                                "OrganizeChansMenuItem",
                                                                "ShowScanBanksMenu",
                                                                "ShowServiceMenuItem",
                                                                "ShowAllChanMenuItem",
                                                                "NextBankMenuItem",
                                                                "PreviousBankMenuItem",
                                                                "EditHistoryMenuItem",
                                                                "CableTypeMenuItem",
                                                                "ComPortMenuItem",
                                                                "DebugCommMenuItem",
                                                                "DatabaseAddressMenuItem",
                                                                "PrintBankMenuItem",
                                                                "UploadAllBanksMenuItem",
                                                                "UploadCurrBankMenuItem",
                                                                "UploadSrchBankMenuItem",
                                                                "HomePageMenuItem",
                                                                "DBaseSiteMenuItem",
                                                                "DisplayErrorsMenuItem",
                                                                "AboutMenuItem"};

const struct {
    const char* alias;
    MenuId id;
} kAliases[] = {{"UploadAllMenuItem", MenuId::UploadAllBanks},
                {"UploadBankMenuItem", MenuId::UploadCurrBank},
                {"UploadSearchMenuItem", MenuId::UploadSrchBank},
                {"ShowCommErrorsMenuItem", MenuId::DisplayErrors},
                {"OrganizeChannelsMenuItem", MenuId::OrganizeChans},
                {"ClearCurrentBankMenuItem", MenuId::ClearCurrBank}};

} // namespace

QString MenuItemName(MenuId id) {
    return QString::fromLatin1(kNames[size_t(id)]);
}

std::optional<MenuId> MenuIdByName(QStringView name) {
    for (size_t i = 0; i < kNames.size(); ++i)
        if (name == QLatin1StringView(kNames[i]))
            return MenuId(i);
    for (const auto& a : kAliases)
        if (name == QLatin1StringView(a.alias))
            return a.id;
    return std::nullopt;
}

} // namespace kestrel
