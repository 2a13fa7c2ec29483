#include "link/tlg_thread.h"

CTlgThread::CTlgThread() = default;
CTlgThread::~CTlgThread() = default;
void CTlgThread::run() {}
