// "QZGP Command Suite" version 1: menu commands, kept in the host's menu model.
#include "qzgp/QZGP_CommandSuite.h"
#include "qzhost/HostControls.h"
#include "qzhost/MenuModel.h"

namespace qzhost {

namespace {

QZ_Err GetUniqueCommand(QZGP_Command* command) {
    RequireUIThread("GetUniqueCommand");
    if (QZ_Err err = HostControls::Get().InjectedError(op::kNewCommand)) {
        return err;
    }
    if (command == nullptr) {
        return QZ_Err_NULL_ARGUMENT;
    }
    *command = MenuModel::Get().NewCommand();
    return QZ_Err_NONE;
}

QZ_Err InsertMenuCommand(QZGP_Command command, const char* name, QZGP_MenuID menu,
                         std::int32_t position) {
    RequireUIThread("InsertMenuCommand");
    if (QZ_Err err = HostControls::Get().InjectedError(op::kInsertMenuCommand)) {
        return err;
    }
    if (name == nullptr) {
        return QZ_Err_NULL_ARGUMENT;
    }
    return MenuModel::Get().Insert(command, name, menu, position);
}

QZ_Err RemoveMenuCommand(QZGP_Command command) {
    RequireUIThread("RemoveMenuCommand");
    return MenuModel::Get().Remove(command);
}

QZ_Err SetMenuCommandName(QZGP_Command command, const char* name) {
    RequireUIThread("SetMenuCommandName");
    if (name == nullptr) {
        return QZ_Err_NULL_ARGUMENT;
    }
    return MenuModel::Get().SetText(command, name);
}

QZ_Err EnableCommand(QZGP_Command command) {
    RequireUIThread("EnableCommand");
    if (QZ_Err err = HostControls::Get().InjectedError(op::kEnableCommand)) {
        return err;
    }
    return MenuModel::Get().SetEnabled(command, true);
}

QZ_Err DisableCommand(QZGP_Command command) {
    RequireUIThread("DisableCommand");
    return MenuModel::Get().SetEnabled(command, false);
}

QZ_Err CheckMarkMenuCommand(QZGP_Command command, bool checked) {
    RequireUIThread("CheckMarkMenuCommand");
    if (QZ_Err err = HostControls::Get().InjectedError(op::kCheckMenuCommand)) {
        return err;
    }
    return MenuModel::Get().SetChecked(command, checked);
}

} // namespace

extern const QZGP_CommandSuite1 gCommandSuite1 = {
    GetUniqueCommand, InsertMenuCommand, RemoveMenuCommand,   SetMenuCommandName,
    EnableCommand,    DisableCommand,    CheckMarkMenuCommand};

} // namespace qzhost
