#include "Patient.h"

#include "AttentionPatient.h"
#include "MemoryPatient.h"
#include "MovementPatient.h"
#include "Options.h"
#include "TaskTimer.h"
#include "VisionPatient.h"

std::unique_ptr<Patient> Patient::forTask(const Options &options, const Screen &screen)
{
    if (options.isVision())
        return std::make_unique<VisionPatient>(options.observer.vision, options.seed, screen);
    if (options.isMovement())
        return std::make_unique<MovementPatient>(options.observer.movement, options.seed, screen);
    if (options.isMemory())
        return std::make_unique<MemoryPatient>(options.observer.memory, options.seed, screen);
    return std::make_unique<AttentionPatient>(options.observer, options.seed, screen);
}

void Patient::pressIn(int ms)
{
    auto *told = new TaskTimer(this);
    told->setSingleShot(true);
    connect(told, &TaskTimer::timeout, this, [this, told] {
        told->deleteLater();
        press();
    });
    told->start(ms);
}
