#pragma once

#include "car.h"
#include "carfiles.h"

#include <memory>

namespace ecu {

/** What happens to a car: a drive, which begins again after its end. */
class CarDrive
{
public:
    virtual ~CarDrive();

    /** Brings a car to a moment of the drive; moments do not go back. */
    virtual void advance(qint64 ms, Car *car) = 0;

    /**
     * Opens the simulated car's trip, by "simulator", or a file.
     * @param files  what explains a candump log of a car's own frames
     * @param error  one line that names the file and what was expected
     */
    static std::unique_ptr<CarDrive> open(const QString &source, const module::CarFiles &files,
                                          QString *error);
};

} // namespace ecu
