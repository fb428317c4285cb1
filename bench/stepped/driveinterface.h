#pragma once

// How a bench steps the drive of a module in another process. Methods that move the drive return
// its position as it is then: when the next emission is due, and whether the drive catches up.
namespace driveinterface {

constexpr char path[] = "/com/stavel/norda/Drive";
constexpr char name[] = "com.stavel.norda.Drive1";

} // namespace driveinterface
