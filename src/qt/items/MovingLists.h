#pragma once

class QCoreApplication;

namespace corvane {

/// From then on a mouse's click acts on what it meets, also while a list there still moves by a
/// turn of the wheel. The toolkit would take it for a wish to stop the list, and do no more.
void stopMovingListsAtClicks(QCoreApplication& application);

} // namespace corvane
