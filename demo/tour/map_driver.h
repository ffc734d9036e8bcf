#pragma once
// A hand on the map: real pointer, wheel and key messages, and a look at what they do.

#include <functional>
#include <string>
#include <vector>

#include "horivo_map.h"
#include "tour/png_capture.h"
#include "window/host_windows.h"

/// Pumps the thread's messages for `ms` milliseconds.
void PumpMessages(DWORD ms);

/// Drives one map window as a user would. Positions are client pixels from the upper left.
class MapDriver {
public:
    explicit MapDriver(HWND map) : map_(map) {}

    void Press(int virtualKey) const;
    /// Moves the system's pointer there, so that it also rests where the map believes it to be.
    void PointAt(int x, int y) const;
    /// Searches the pixel of a city on the visible side by the distance that the map writes into
    /// its record at each move; leaves the pointer there. @return that pixel
    POINT PointAtCity(const CityRecord& city) const;
    /// Leaves the pointer near the middle where the most cities are in reach. @return how many
    int PointAtCrowd(const std::vector<CityRecord>& cities) const;
    void Click(int x, int y) const;
    void Drag(int fromX, int fromY, int toX, int toY) const;
    /// Turns the wheel where the pointer is.
    /// @param notches  positive turns the wheel away from the user, which moves the globe away
    void TurnWheel(int notches) const;
    /// Asks the map to fly to a city.
    void ShowCity(const CityRecord& city) const;

    int Width() const;
    int Height() const;
    /// Has the map drawn at once and takes the picture.
    Picture Look() const;
    /// The same with the information lines and the frame rate shown.
    Picture LookWithInformation() const;
    /// Looks until `seen` is content; returns that picture, or an empty one after 60 seconds.
    Picture LookUntil(const std::function<bool(const Picture&)>& seen) const;
    /// Looks without a pause and without pumping messages, for what passes quickly.
    /// @return the first picture that `seen` is content with; empty after `looks` of them
    Picture LookOften(int looks, const std::function<bool(const Picture&)>& seen) const;
    /// Looks until nothing is loaded, nothing moves and the picture has stopped changing.
    Picture LookWhenSettled() const;
    /// The title of the window that the map's user sees.
    std::wstring Title() const;

private:
    void SendPointer(UINT message, WPARAM buttons, int x, int y) const;

    HWND map_;
};

/// Whether the map's red line about loading or splitting stands in the lower left corner.
bool ShowsLoading(const Picture& picture);
