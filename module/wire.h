#pragma once

/** The numbers that the module's signals and commands carry. */
namespace module::wire {

/** The argument of `NordaData_Request`. */
enum Page { VersionPage = 5, MenuPage = 13 };

/** What a touch of a gauge or a custom key reports. */
enum TouchAction { Pressed = 1, Released = 2 };

/** The keys whose captions the module sets. */
enum CustomKey { FirstKey = 0x12, SecondKey = 0x22 };
enum CustomKeyState { KeyDisabled = 0, KeyEnabled = 1, KeyChecked = 2 };

/** The type of a menu line. The title is line 1, the first row line 2. */
enum LineType { TitleLine = 1, ItemLine = 2, ValueLine = 3 };
constexpr int titleNumber = 1;

/** The first byte of `parkingDistanceRear`; the second is a level, 0 for clear. */
enum ParkingCode {
    NoBlindSpot = 0,
    FirstZone = 1,
    FirstRearZone = 5,
    LastZone = 8,
    BlindSpotLeft = 9,
    BlindSpotRight = 10,
    LastParkingCode = BlindSpotRight
};
constexpr int LastParkingLevel = 4;

/** The bits of `doorStatus`. */
enum OpenBit {
    Hood = 0x01,
    Trunk = 0x02,
    DoorFrontLeft = 0x04,
    DoorFrontRight = 0x08,
    DoorRearLeft = 0x10,
    DoorRearRight = 0x20
};

/** The flags of tire pressures and temperatures. */
enum TireFlag {
    TireFrontLeft = 0x01,
    TireFrontRight = 0x02,
    TireRearLeft = 0x04,
    TireRearRight = 0x08,
    TireTextsValid = 0x20
};

enum EngineLamp { EngineUnknown, EngineFine, EngineFault };
enum GearPosition { Park, Reverse, Drive };
enum PeakColor { PeakRed = 1, PeakGreen = 5 };

/** The kind and the speakers of `audioInterruptNotify`. */
enum Interrupt { InterruptOver = 0, VoiceInformation = 2, VoiceRecognition = 3, WarningTone = 4 };
enum Speaker {
    SpeakerFrontLeft = 0x01,
    SpeakerFrontRight = 0x02,
    SpeakerRearLeft = 0x04,
    SpeakerRearRight = 0x08,
    SpeakerCentre = 0x10
};

} // namespace module::wire
