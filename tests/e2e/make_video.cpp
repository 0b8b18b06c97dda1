#include "engine/TestVideo.h"

#include <QString>

#include <cstdio>

/// make_video FILE PICTURES: writes a video with sound for the scripts.
int main(int argc, char** argv)
{
    if (argc != 3) {
        std::fputs("usage: make_video FILE PICTURES\n", stderr);
        return 2;
    }
    TestVideo::Recipe recipe;
    recipe.pictures = QString(argv[2]).toInt();
    recipe.size = {320, 240};
    recipe.hasSound = true;
    return TestVideo::write(QString::fromLocal8Bit(argv[1]), recipe) ? 0 : 1;
}
