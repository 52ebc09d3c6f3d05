#pragma once

class QCoreApplication;

namespace corvane {

/// From then on a mouse's click stops all lists of its window, and acts on what it meets: the
/// toolkit lets the click on a list that still moves by a turn of the wheel stop it, and do no
/// more.
void stopMovingListsAtClicks(QCoreApplication& application);

} // namespace corvane
