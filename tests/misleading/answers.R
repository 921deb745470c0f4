# Tells what the package says of each call of r.py, in records that end with the control character 1E.
library(vexroc)

say <- function(...) cat(paste(..., sep = "\x1f"), "\x1e\n", sep = "")

say_rows <- function(name, kind, frame, columns)
  for (i in seq_len(nrow(frame))) do.call(say, c(name, kind, lapply(frame[i, columns], format, digits = 17)))

# Of both results; each says a kind once, of its own cases.
said_of <- function(fit, pairs) {
  one_of_each <- function(kind) {
    stopifnot(!duplicated(fit[[kind]]$code), !duplicated(pairs[[kind]]$code))
    remarks <- rbind(pairs[[kind]], fit[[kind]])
    remarks[!duplicated(remarks$code), ]
  }
  list(cautions = one_of_each("cautions"), notes = one_of_each("notes"))
}

answer <- function(name, fit, compare, file, ...) {
  read <- function(...) read.csv(file, check.names = FALSE, ...)
  data <- read(...)
  labels <- read(..., colClasses = "character", na.strings = character())
  warned <- character()
  catch <- function(w) {
    if (inherits(w, "vexroc_caution")) warned <<- c(warned, conditionMessage(w))
    invokeRestart("muffleWarning")
  }
  refused <- tryCatch(withCallingHandlers({
    fit <- eval(fit)
    pairs <- eval(compare)
    NULL
  }, warning = catch), error = conditionMessage)
  if (!is.null(refused)) return(say(name, "refused", refused))
  said <- said_of(fit, pairs)
  stopifnot(said$cautions$text %in% warned)
  for (kind in names(said)) say_rows(name, kind, said[[kind]], c("code", "text"))
  areas <- if (is.null(pairs)) fit$areas else pairs$areas
  say_rows(name, "area", areas,
           c("area", "std_error", "p_value", "log10_p", "lower", "upper", "positive", "negative"))
  if (!is.null(pairs))
    say_rows(name, "pair", pairs$comparisons,
             c("difference", "z", "p_value", "log10_p", "lower", "upper", "positive", "negative"))
}
