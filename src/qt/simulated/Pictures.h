#pragma once

#include <QSize>
#include <QString>

namespace corvane {

class CorvaneApp;
class MainWindows;

/// What the pictures are of, and where they go.
struct PictureOrder {
    /// A folder that is there.
    QString folder;
    QSize windowSize;
    bool isDark = false;
};

/// Leads the program through what it can show, once its loop runs, puts a picture of each state
/// into the folder and ends the program: with 0 where every text that is legible at all stands out
/// from what is behind it, by 4.5 to 1 (symbols by 3 to 1). Those that don't are printed, and what
/// couldn't be shown.
void takePictures(const PictureOrder& order, CorvaneApp& app, MainWindows& windows);

} // namespace corvane
