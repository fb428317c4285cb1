#pragma once

namespace norda {

// The numbers by which the vehicle module and the screens understand each other. What a list or a
// message holds is decoded from tables beside their readers.

/** Pages that the module is asked for. */
enum class ModulePage : int { None = 0, Versions = 5, Menu = 13 };

/** What happened to a gauge or to a module-defined key. */
enum class TouchAction : unsigned char { Pressed = 1, Released = 2 };

/** The two keys that the module defines on a screen. */
enum class ModuleKey : unsigned char { First = 0x12, Second = 0x22 };

/** What the module wants a screen to show. */
enum class DisplayType : unsigned char {
    OwnPage = 0,
    List = 1,
    Popup = 2,
    List16 = 16,
    List17 = 17,
    List18 = 18,
};

/** Kinds of line in the configuration menu. */
enum class MenuLine : int { Title = 1, Item = 2, Value = 3 };

/** The check-engine lamp. */
enum class EngineLamp : unsigned char { Unknown = 0, Off = 1, On = 2 };

/** Styles of a gauge; every other byte is an arc too. */
enum class GaugeLook : unsigned char { Arc = 0, Needle = 1 };

/** Set in the flags of tire texts that are valid; bits 0 to 3 are the tires in warning. */
constexpr unsigned char validTireTexts = 0x20;

/** A tire temperature without a sensor. */
constexpr int noTireSensor = 255;

} // namespace norda
