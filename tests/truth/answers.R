# Tells what the package says of each call that doors.py wrote below, one line a row, numbers to the bit.
suppressMessages(library(vexroc))
quantities <- eval(formals(operating_points)$ret)

cell <- function(x) paste0(substr(typeof(x), 1, 1), if (is.numeric(x)) ifelse(is.na(x), "NA", sprintf("%a", x)) else x)

tell <- function(name, call) {
  said <- tryCatch(suppressWarnings(as.data.frame(call)), error = function(e) data.frame(refused = conditionMessage(e)))
  if (nrow(said) == 0) said <- data.frame(none = TRUE)
  said[] <- lapply(said, function(x) if (is.integer(x)) as.double(x) else x)
  for (i in seq_len(nrow(said)))
    cat(name, unlist(Map(c, names(said), lapply(said[i, , drop = FALSE], cell))), sep = "\x1f", fill = FALSE, "\n")
}
options(warn = -1)
