#include "records/protocol.h"

CProtocol::CProtocol() = default;
void CProtocol::addCacheServiceString(const QString &text, ProtocolTypes, bool) { lines << text; }
void CProtocol::add(const QString &text, ProtocolTypes) { lines << text; }
