#pragma once

namespace MZ {

// The host's project-wide stations. Which message travels on which station is
// stated with each message class.
inline constexpr const char* kStation_BinActivation = "MZ.Station.BinActivation";
inline constexpr const char* kStation_MasterClipActivation = "MZ.Station.MasterClipActivation";
inline constexpr const char* kStation_SequenceActivation = "MZ.Station.SequenceActivation";
inline constexpr const char* kStation_TrackItemActivation = "MZ.Station.TrackItemActivation";
inline constexpr const char* kStation_ClosedCaptionsActivation =
    "MZ.Station.ClosedCaptionsActivation";
inline constexpr const char* kStation_CaptionSelection = "MZ.Station.CaptionSelection";
// Changes of objects' properties, and requests addressed to every panel.
inline constexpr const char* kStation_Info = "MZ.Station.Info";

} // namespace MZ
