#pragma once
// Drives a map window as a user would, and takes pictures of it.

#include <functional>
#include <string>
#include <vector>

#include "horivo_map.h"
#include "tour/picture.h"
#include "windows_api.h"

/// Dispatches the thread's messages for `ms` milliseconds.
void PumpMessages(DWORD ms);

/// Sends one map window the messages of pointer, wheel and keyboard. Positions are client pixels
/// from the upper left corner. A function throws std::runtime_error when the map does not do in
/// time what the function waits for.
class MapDriver {
public:
    /// @param cities  the table that the map reads and writes
    MapDriver(HWND map, const std::vector<CityRecord>& cities) : map_(map), cities_(cities) {}

    int Width() const;
    int Height() const;
    const std::vector<CityRecord>& Cities() const { return cities_; }
    /// The first city of this name.
    const CityRecord& City(const wchar_t* name) const;
    /// Whether the title of the map's host window names the city.
    bool TitleNames(const wchar_t* city) const;

    void Press(int virtualKey) const;
    /// Moves the pointer to a position in the map. Also moves the cursor of Windows there, because
    /// the map reads the position of the cursor when the pointer has rested.
    void PointAt(int x, int y) const;
    /// Moves the pointer to a city on the visible side of the globe, and returns the position.
    /// Searches for the smallest distance from the city, which the map writes into the record of
    /// the city at each move of the pointer.
    POINT PointAtCity(const wchar_t* name) const;
    /// Moves the pointer to the place near the middle of the window with the most cities near the
    /// pointer.
    void PointAtCrowd() const;
    void Click(int x, int y) const;
    /// Drags the globe from the middle of the window to the right and down.
    void Drag() const;
    /// Turns the wheel at the present position of the pointer.
    /// @param notches  positive: away from the user, which makes the globe smaller
    void TurnWheel(int notches) const;
    /// Asks the map to fly to a city and waits until the flight has ended and the picture stays the
    /// same.
    void FlyTo(const CityRecord& city) const;
    void FlyTo(const wchar_t* city) const { FlyTo(City(city)); }

    /// Makes the map draw a frame and takes its picture.
    Picture Look() const;
    /// Looks again and again until `isWanted` accepts the picture.
    Picture LookUntil(const std::function<bool(const Picture&)>& isWanted) const;
    /// Takes pictures until the map loads nothing and the pictures stay the same. @return the last
    Picture LookWhenSettled() const;
    /// Waits as LookWhenSettled does, then takes a picture with the information lines and the frame
    /// rate.
    Picture LookWithInformation() const;
    /// Makes the map load its picture again and takes a picture while the map shows that it is
    /// loading.
    Picture LookWhileLoading() const;

private:
    void SendPointer(UINT message, WPARAM buttons, int x, int y) const;

    HWND map_;
    const std::vector<CityRecord>& cities_;
};
