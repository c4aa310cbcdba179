#pragma once

#include "file/JsonReader.h"
#include "model/Bin.h"
#include "model/CaptioningStream.h"
#include "model/MasterClip.h"
#include "model/Project.h"
#include "model/Sequence.h"

#include <QJsonObject>

#include <cstddef>

namespace platform::core {

// The journal names a model object by its place in the project (see
// platform/PROJECT_FORMAT.md): bins and the clips and sequences of a bin by
// index, a clip's stream by format, a stream's caption by index. Replaying
// the journal's changes in order on the project they started from finds every
// object where it was when the change was recorded.
//
// The writers take an object that is part of a project and throw
// KSL::Exception for one that is not.
QJsonObject BinPlace(const Bin& bin);
QJsonObject ClipPlace(const MasterClip& clip);
QJsonObject SequencePlace(const Sequence& sequence);
QJsonObject StreamPlace(const CaptioningStream& stream);
std::size_t CaptionIndex(const CaptioningStream& stream, const zelcaptioning::Caption& caption);

// The edit description's members kind, then place's.
QJsonObject Described(const char* kind, QJsonObject place);

// The readers find the object at the place the description's members name,
// and throw JsonValueError naming the member whose object is not there.
KSL::InterfaceRef<Bin> BinAt(Project& project, const JsonReader& description);
KSL::InterfaceRef<MasterClip> ClipAt(Project& project, const JsonReader& description);
KSL::InterfaceRef<Sequence> SequenceAt(Project& project, const JsonReader& description);
KSL::InterfaceRef<CaptioningStream> StreamAt(Project& project, const JsonReader& description);
boost::intrusive_ptr<zelcaptioning::Caption> CaptionAt(const CaptioningStream& stream,
                                                       const JsonReader& description);

} // namespace platform::core
