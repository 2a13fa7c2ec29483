#include "app/options.h"

COptions::COptions() = default;
void COptions::Load() {}
void COptions::Save() {}
bool COptions::CheckAndMakeFolders() { return true; }
int COptions::longAOLength(int) { return 0; }
