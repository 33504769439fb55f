#include "InfoPal/frame/RQSession.h"

RQSession::RQSession() = default;
RQSession::RQSession(const RQSession&) = default;
RQSession& RQSession::operator=(const RQSession&) = default;
RQSession::~RQSession() = default;
