#include "HostSuites.h"

#include "qzgp/QZGP_CommandSuite.h"
#include "qzgp/QZGP_UtilitySuite.h"

namespace qzhost {

extern const QZGP_RegisterSuite6 gRegisterSuite6;
extern const QZGP_CommandSuite1 gCommandSuite1;
extern const QZGP_UtilitySuite7 gUtilitySuite7;
extern const QZGP_UtilitySuite13 gUtilitySuite13;

std::span<const HostSuite> HostSuites() {
    static const HostSuite suites[] = {
        {kQZGP_RegisterSuite, kQZGP_RegisterSuiteVersion6, &gRegisterSuite6},
        {kQZGP_CommandSuite, kQZGP_CommandSuiteVersion1, &gCommandSuite1},
        {kQZGP_UtilitySuite, kQZGP_UtilitySuiteVersion7, &gUtilitySuite7},
        {kQZGP_UtilitySuite, kQZGP_UtilitySuiteVersion13, &gUtilitySuite13},
    };
    return suites;
}

} // namespace qzhost
