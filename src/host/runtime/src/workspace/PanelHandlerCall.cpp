#include "qzhost/PanelHandlerCall.h"

#include <exception>

#include "host/U_Exceptions.h"

namespace qzhost {

std::optional<QZ_Err> CallPanelHandler(const std::function<void()>& handler) {
    try {
        handler();
    } catch (QZ_Err code) {
        return code;
    } catch (const std::exception& error) {
        return U_TranslateAndReportException(error);
    } catch (...) {
        return QZ_Err_GENERIC;
    }
    return std::nullopt;
}

} // namespace qzhost
