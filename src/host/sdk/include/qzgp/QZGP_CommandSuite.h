// "QZGP Command Suite" version 1: menu commands.
#pragma once

#include "qzgp/QZGP_RegisterSuite.h"

inline constexpr const char* kQZGP_CommandSuite = "QZGP Command Suite";
inline constexpr std::int32_t kQZGP_CommandSuiteVersion1 = 1;

using QZGP_MenuID = std::int32_t;

/// Table positions are fixed.
struct QZGP_CommandSuite1 {
    /// 1st. [ui-thread] A command number that no other command uses.
    QZ_Err (*GetUniqueCommand)(QZGP_Command* command);
    /// 2nd. [ui-thread] Insert `command` with the text `name` into menu `menu` at
    /// `position` (negative positions count from the end of the menu).
    QZ_Err (*InsertMenuCommand)(QZGP_Command command, const char* name, QZGP_MenuID menu,
                                std::int32_t position);
    /// 3rd. [ui-thread] Remove an inserted command.
    QZ_Err (*RemoveMenuCommand)(QZGP_Command command);
    /// 4th. [ui-thread] Change the text of an inserted command.
    QZ_Err (*SetMenuCommandName)(QZGP_Command command, const char* name);
    /// 5th. [ui-thread] Let the user choose `command` in its menu.
    QZ_Err (*EnableCommand)(QZGP_Command command);
    /// 6th. [ui-thread] Grey `command` out in its menu.
    QZ_Err (*DisableCommand)(QZGP_Command command);
    /// 7th. [ui-thread] Show or remove the check mark beside `command`.
    QZ_Err (*CheckMarkMenuCommand)(QZGP_Command command, bool checked);
};
