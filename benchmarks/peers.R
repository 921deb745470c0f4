# Times the R package against pROC, in one process, on the same vectors; results are compared first.
#   Rscript benchmarks/peers.R [LIBRARY]     where the package vexroc is installed
# Calls alternate; each line is the median of the ratios of neighbouring times.
arguments <- commandArgs(TRUE)
library(vexroc, lib.loc = if (length(arguments) > 0) arguments[1])
suppressMessages(library(pROC))

seconds <- function(expression) system.time(expression)[["elapsed"]]

compare_times <- function(ours, theirs, rounds, repeats) {
  ratios <- replicate(rounds, {
    a <- seconds(for (i in seq_len(repeats)) ours())
    b <- seconds(for (i in seq_len(repeats)) theirs())
    c(a, b)
  })
  c(apply(ratios, 1, median) / repeats * 1000, median(ratios[2, ] / ratios[1, ]))
}

cat("| what | cases | vexroc, ms | pROC, ms | times faster |\n|---|---|---|---|---|\n")
for (n in 10^(3:5)) {
  set.seed(7)
  y <- as.integer(runif(n) < 0.1)
  a <- rnorm(n) + y
  b <- a + rnorm(n)
  study <- data.frame(y, a, b)
  roc_of <- function(x) roc(y, x, levels = c(0, 1), direction = "<", quiet = TRUE)
  area <- function() vexroc(a, state = y)
  area_peer <- function() ci.auc(roc_of(a), method = "delong")
  pair <- function() compare(vexroc(study[-1], state = y))
  pair_peer <- function() roc.test(roc_of(a), roc_of(b), method = "delong")
  stopifnot(all.equal(area()$areas$area, as.numeric(area_peer())[2]),
            all.equal(pair()$comparisons$p_value, pair_peer()$p.value))
  fit <- vexroc(a, state = y)
  columns <- c("sensitivity", "specificity", "ppv", "npv", "accuracy")
  points <- function() operating_points(fit, ci.method = "none", ret = columns)
  points_peer <- function() coords(roc_of(a), "all", ret = columns, transpose = FALSE)
  resampled <- function() vexroc(a, state = y, ci.method = "bootstrap", boot.n = 1999)
  resampled_peer <- function() ci.auc(roc_of(a), method = "bootstrap", boot.n = 1999, progress = "none")
  stopifnot(all.equal(points()$npv[-1], points_peer()$npv[-1]))
  rounds <- if (n < 1e5) 11 else 5
  repeats <- max(1, 2e4 / n)
  for (row in list(list("area, interval, curve", area, area_peer), list("paired comparison", pair, pair_peer),
                   list("operating points", points, points_peer), list("bootstrap", resampled, resampled_peer))) {
    once <- row[[1]] == "bootstrap" || (row[[1]] == "operating points" && n == 1e5)
    figures <- if (once) compare_times(row[[2]], row[[3]], 1, 1) else compare_times(row[[2]], row[[3]], rounds, repeats)
    cat(sprintf("| %s | 1e%d | %.2f | %.2f | %.1f |\n", row[[1]], round(log10(n)), figures[1], figures[2], figures[3]))
  }
}
