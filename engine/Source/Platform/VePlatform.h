#pragma once
// The portable layer under the engine: logging, message boxes and halts, time, files and
// folders, the random generator. Nothing above the engine includes SDL or OpenGL; what the
// engine needs of the system it finds here or in the engine's own services.
#include "Platform/VeFiles.h"
#include "Platform/VeLog.h"
#include "Platform/VeMessageBox.h"
#include "Platform/VeRandom.h"
#include "Platform/VeTime.h"
