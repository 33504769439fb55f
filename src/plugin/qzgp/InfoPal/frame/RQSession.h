// RQSession: an empty session class that the library exports as part of its interface.
// Nothing in the library creates one.
#pragma once

#include "qzgp/QZ_Basic.h"

class QZ_PLUGIN_EXPORT RQSession {
public:
    RQSession(const RQSession& other);
    RQSession& operator=(const RQSession& other);
    virtual ~RQSession();

protected:
    RQSession();
};
