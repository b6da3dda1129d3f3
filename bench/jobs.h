// The jobs that the library is measured at, in groups; each group has a source of its own.
#ifndef PAGESCAN_BENCH_JOBS_H
#define PAGESCAN_BENCH_JOBS_H

#include "input.h"
#include "job.h"

namespace pagescan::bench {

// Each adds its jobs. The input must outlive them.
void addParseJobs(Jobs& jobs, const Input& input);
void addPageJobs(Jobs& jobs, const Input& input);
void addStyleJobs(Jobs& jobs, const Input& input);
void addStyleTextJobs(Jobs& jobs, const Input& input);
void addResolveJobs(Jobs& jobs, const Input& input);
void addUrlJobs(Jobs& jobs, const Input& input);
void addEncodeJobs(Jobs& jobs, const Input& input);
void addCharsetJobs(Jobs& jobs, const Input& input);
void addDecodingJobs(Jobs& jobs);
void addScrubJobs(Jobs& jobs, const Input& input);
void addStringJobs(Jobs& jobs, const Input& input);

}  // namespace pagescan::bench

#endif
