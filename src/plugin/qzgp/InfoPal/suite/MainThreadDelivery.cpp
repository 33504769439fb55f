#include "InfoPal/suite/MainThreadDelivery.h"

#include <string>

#include <boost/bind/bind.hpp>
#include <boost/function.hpp>

#include "InfoPal/frame/HostCallGuard.h"
#include "InfoPal/suite/InfoPalSuite.h"
#include "kitcore/threads/MainThreadQueue.h"

namespace infopal {

namespace {

using kitcore::utility::UTF16String;

std::string Copy(QZ_Narrow text) {
    return text != nullptr ? std::string(text) : std::string();
}
UTF16String Copy(QZ_Wide text) {
    return text != nullptr ? UTF16String(text) : UTF16String();
}

template <class String>
auto PointerOrNull(const String& text) {
    return text.empty() ? nullptr : text.c_str();
}

// Runs on the main thread. An error of the re-entered suite function is thrown into the
// host's dispatcher: the queuing caller already had its 0.
void DeliverTextLines(const std::string& s1, const std::string& s2, const std::string& s3,
                      const std::string& s4, const std::string& s5, bool selector) {
    const QZ_InfoPaletteSuite2& suite = InfoPalSuiteTable();
    const QZ_Err err =
        selector ? suite.SetTextLines3(PointerOrNull(s1), PointerOrNull(s2), PointerOrNull(s3))
                 : suite.SetTextLines5(PointerOrNull(s1), PointerOrNull(s2), PointerOrNull(s3),
                                       PointerOrNull(s4), PointerOrNull(s5));
    ThrowIfError(err);
}

void DeliverTextLinesW(const UTF16String& s1, const UTF16String& s2, const UTF16String& s3,
                       const UTF16String& s4, const UTF16String& s5, bool selector) {
    const QZ_InfoPaletteSuite2& suite = InfoPalSuiteTable();
    const QZ_Err err =
        selector ? suite.SetTextLines3W(PointerOrNull(s1), PointerOrNull(s2), PointerOrNull(s3))
                 : suite.SetTextLines5W(PointerOrNull(s1), PointerOrNull(s2), PointerOrNull(s3),
                                        PointerOrNull(s4), PointerOrNull(s5));
    ThrowIfError(err);
}

} // namespace

QZ_Err QueueTextLines(QZ_Narrow l1, QZ_Narrow l2, QZ_Narrow l3, QZ_Narrow l4, QZ_Narrow l5,
                      bool selector) {
    boost::function<void()> call =
        boost::bind(&DeliverTextLines, Copy(l1), Copy(l2), Copy(l3), Copy(l4), Copy(l5), selector);
    (void)kitcore::threads::AsyncCallFromMainThread(call, 0);
    return QZ_Err_NONE;
}

QZ_Err QueueTextLinesW(QZ_Wide l1, QZ_Wide l2, QZ_Wide l3, QZ_Wide l4, QZ_Wide l5, bool selector) {
    boost::function<void()> call =
        boost::bind(&DeliverTextLinesW, Copy(l1), Copy(l2), Copy(l3), Copy(l4), Copy(l5), selector);
    (void)kitcore::threads::AsyncCallFromMainThread(call, 0);
    return QZ_Err_NONE;
}

} // namespace infopal
