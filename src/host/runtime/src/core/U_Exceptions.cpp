// Exception reports: the host shows the error and gives the code of the reporting function.
#include "host/U_Exceptions.h"

#include "qzhost/HostControls.h"

QZ_Err U_TranslateAndReportException(const std::exception& error) {
    qzhost::RequireUIThread("U_TranslateAndReportException");
    return qzhost::HostControls::Get().Report(error.what());
}
