# Compares the results in a file that witnesses.py wrote with pROC. Usage: Rscript witnesses.R FILE
suppressMessages(library(pROC))

file <- file(commandArgs(trailingOnly = TRUE)[1], "rb")
take <- function(n) readBin(file, "double", n)

names <- c("area 1", "area 2", "DeLong variance 1", "DeLong variance 2", "DeLong covariance", "paired z", "paired p")
tolerance <- c(1e-13, 1e-13, 1e-13, 1e-13, 1e-13, 1e-9, 1e-9)
worst <- numeric(length(names))
sets <- integer(length(names))
different <- 0

repeat {
    n <- take(1)
    if (length(n) == 0) break
    y <- take(n); first <- take(n); second <- take(n)
    direction <- if (take(1) == 1) ">" else "<"
    ours <- take(length(names))

    # Levels and direction are fixed: left alone, pROC chooses the direction that gives the larger area.
    one <- roc(y, first, levels = c(0, 1), direction = direction, quiet = TRUE)
    two <- roc(y, second, levels = c(0, 1), direction = direction, quiet = TRUE)
    theirs <- suppressWarnings(c(auc(one), auc(two), var(one, method = "delong"), var(two, method = "delong"),
                                 cov(one, two, method = "delong"), NA, NA))
    compared <- rep(TRUE, length(names))
    if (min(sum(y), n - sum(y)) > 1) {
        test <- suppressWarnings(roc.test(one, two, method = "delong", paired = TRUE))
        theirs[6:7] <- c(test$statistic, test$p.value)
    } else {
        compared[6:7] <- FALSE # one case of a state has no variance: roc.test stops
    }
    difference <- abs(theirs - ours)
    difference[(is.na(theirs) & is.na(ours)) | (!is.na(theirs) & !is.na(ours) & theirs == ours)] <- 0
    sets <- sets + compared
    bad <- compared & (is.na(difference) | difference > tolerance * pmax(1, abs(ours), na.rm = TRUE))
    if (any(bad)) {
        different <- different + 1
        if (different <= 10)
            cat("n", n, "positive", sum(y), direction, names[bad], "ours", format(ours[bad], digits = 17), "pROC",
                format(theirs[bad], digits = 17), "\n")
    }
    worst <- pmax(worst, ifelse(bad | !compared, 0, difference))
}
for (i in seq_along(names))
    cat(sprintf("%s (pROC): %d data sets, largest difference %.1e\n", names[i], sets[i], worst[i]))
if (different > 0 || sets[1] == 0) quit(status = 1)
