// All global objects, in their order of construction. Only Time leans on an earlier one: its constructor
// reads the option TZ.

#include "app/run/globals.h"

#include "app/clock.h"
#include "app/options.h"
#include "app/state.h"
#include "link/prf_thread.h"
#include "link/stream_crypt.h"
#include "link/tlg_thread.h"
#include "procedures/process_cks.h"
#include "procedures/process_direct.h"
#include "procedures/process_skk.h"
#include "records/protocol.h"
#include "ui/dialogs/confirm_category_dialog.h"
#include "ui/dialogs/confirm_r_dialog.h"
#include "ui/form_main.h"
#include "ui/sound.h"

#include <QSharedMemory>

FormMain *mainWindow = nullptr;
CConfirmRDialog *ConfirmRDialog = nullptr;
CConfirmCategoryDialog *ConfirmCategoryDialog = nullptr;
QSharedMemory sharedMemory;
const QString MemKey = QStringLiteral("VELDA_SharedMemory");
COptions Options;
CState State;
CTlgThread TlgThread;
CPrfThread PrfThread;
CProtocol Log;
CStreamCrypt StreamCrypt;
CSound sound;
CTime Time;
CProcessCKS ProcessCKS;
CProcessSKK ProcessSKK;
CProcessDirect ProcessDirect;
