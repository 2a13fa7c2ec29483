#include "link/prf_thread.h"

CPrfThread::CPrfThread() = default;
CPrfThread::~CPrfThread() = default;
void CPrfThread::run() {}
