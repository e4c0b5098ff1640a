// picture_crew.h - makes pictures in several processes at once.
#pragma once

#include "catalogue/picture_store.h"

#include <functional>
#include <vector>

namespace quillon {

// Runs the program with --worker so many times and hands each one job after the other, those of one
// figure together; returns when every job was made or given up. A worker that ends over a job is
// replaced and the job given up. done is called after each job. False with *why when no worker can
// be started.
bool makePictures(const QString& program, int workers, const std::vector<PictureJob>& jobs,
    const std::function<void()>& done, QString* why);

} // namespace quillon
