#include "ui/sound.h"

CSound::~CSound() = default;
