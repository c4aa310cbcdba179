#pragma once

#include "BE/IMasterClip.h"
#include "KSL/InterfaceRef.h"

#include <QObject>

#include <functional>
#include <string>

namespace host {

class ProjectPanel;

// Lets a person drop a file on a clip (or one of its streams) in the project
// panel to import it as captions of that clip: only a single local file
// dropped on such a row is taken.
class CaptionFileDrop : public QObject {
public:
    using Import = std::function<void(const std::string& pathUtf8,
                                      const KSL::InterfaceRef<BE::IMasterClip>& clip)>;

    CaptionFileDrop(ProjectPanel& panel, Import import);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    ProjectPanel& panel_;
    Import import_;
};

} // namespace host
