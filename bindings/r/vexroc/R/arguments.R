fail <- function(...) stop(..., call. = FALSE)

shown <- function(value) deparse(value, nlines = 1)

quoted <- function(words) paste0("\"", words, "\"", collapse = " or ")

call_forms <- "vexroc(tests, state), or vexroc(state ~ test, data)"

#' What users of other packages may look for.
asked_elsewhere <- c(
  response = paste("the tests come first:", call_forms), predictor = paste("the tests come first:", call_forms),
  formula = "the formula has no name", levels = "`positive` and `negative` name the states",
  interval = "`ci.method` names the interval", method = "`ci.method` names the interval",
  weights = "it is `weight`", weight_kind = "it is `weight.kind`",
  cluster = "rows count as independent cases", ci = "intervals are always there; `ci.method` says which",
  partial.auc = "partial_area(fit, partial.auc = c(1, 0.9)) has it",
  partial.auc.correct = "the standardized area stands beside the partial one", thresholds = "`at` is the cut-offs",
  best.method = "it is `method`", best.weights = "they are `cost.ratio` and `prevalence`",
  boot.stratified = "cases are always drawn within their state", percent = "areas are shares")

#' Refuses what is left in the dots of the method `of`.
refuse_others <- function(of, ...) {
  if (...length() == 0) return(invisible())
  call <- paste0(sub("[.](default|vexroc|summary[.]vexroc|vexroc_[a-z]+)$", "", deparse(substitute(of))), "()")
  given <- substitute(list(...))[-1]
  name <- names(given)[1]
  known <- setdiff(names(formals(of)), c("...", "call", "x", "object", "fit"))
  takes <- if (length(known) > 0) paste("it takes", paste(known, collapse = ", ")) else "it takes no argument more"
  if (is.null(name) || name == "") fail(call, " does not know what ", shown(given[[1]]), " is for; ", takes)
  near <- known[utils::adist(name, known) <= nchar(name) %/% 3]
  hint <- if (name %in% names(asked_elsewhere)) asked_elsewhere[[name]]
          else if (length(near) > 0) paste0("did you mean `", near[1], "`?")
          else takes
  fail(call, " does not know `", name, "`: ", hint)
}

#' One of the words that the argument `name` of the function `of` has by default.
choice <- function(value, name, of = vexroc.default) {
  choices <- eval(formals(of)[[name]])
  if (identical(value, choices)) return(choices[1])
  tryCatch(match.arg(value, choices),
           error = function(e) fail("`", name, "` is ", quoted(choices), ", not ", shown(value)))
}

#' The confidence level, which has two names.
one_level <- function(level, conf.level, one_name) {
  if (!one_name && !identical(level, conf.level)) fail("`level` and `conf.level` are two names of one argument")
  if (!is.numeric(conf.level) || length(conf.level) != 1 || !isTRUE(conf.level > 0 && conf.level < 1))
    fail("`level` is one number between 0 and 1, such as 0.95, not ", shown(conf.level))
  conf.level
}

#' Further words for a missing value, or FALSE for none.
missing_words <- function(missing) {
  if (is.null(missing) || isFALSE(missing)) return(missing)
  if (!is.atomic(missing) || is.logical(missing) || anyNA(missing))
    fail("`missing` is words that stand for a missing value, or FALSE, not ", shown(missing))
  texts_of(missing)
}

#' The direction of each test: of a word for all, or of names of tests with their words, or of both.
directions <- function(direction, tests) {
  names <- if (is.null(names(direction))) rep("", length(direction)) else names(direction)
  general <- direction[names == ""]
  if (!is.character(direction) || !all(direction %in% c("larger", "smaller")) || length(general) > 1)
    fail("`direction` is \"larger\" or \"smaller\", for all tests or by name, such as ",
         shown(setNames("smaller", tests[1])), ", not ", shown(direction))
  named <- direction[names != ""]
  wrong <- c(setdiff(names(named), tests), names(named)[duplicated(names(named))])
  if (length(wrong) > 0)
    fail("`direction` names ", wrong[1], if (wrong[1] %in% tests) " twice" else ", which is no test; tests are ",
         if (!wrong[1] %in% tests) paste(tests, collapse = ", "))
  words <- rep(if (length(general) > 0) unname(general) else "larger", length(tests))
  at <- match(tests, names(named))
  words[!is.na(at)] <- named[at[!is.na(at)]]
  words
}
