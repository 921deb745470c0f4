#' What all questions to a fit share: its cases, the arguments, and the table that answers.
check_fit <- function(fit)
  if (!inherits(fit, "vexroc")) fail("the first argument is a result of vexroc(), not of class ", class(fit)[1])

#' An answer of the library; null means that the user wants to stop.
answer <- function(result) {
  if (is.null(result)) {
    signalCondition(structure(class = c("interrupt", "condition"), list(message = "", call = NULL)))
    invokeRestart("abort")
  }
  result
}

has_both_states <- function(fit) fit$areas$positive > 0 & fit$areas$negative > 0

has_probabilities <- function(fit) identical(fit$study$settings$weight_kind, "probability")

#' Of the sample: the share of positive cases, or of their probability weights.
prevalences_of <- function(fit) {
  states <- fit$areas[paste0(if (has_probabilities(fit)) "weighted_", c("positive", "negative"))]
  states[[1]] / (states[[1]] + states[[2]])
}

subject_of <- function(fit, i) {
  group <- fit$study$group
  paste0(fit$areas$test[i], if (!is.null(group)) paste0(" where ", group$name, " = ", fit$areas$group[i]))
}

#' The columns that `ask(cases, options, area)` makes of each area with cases of both states, one below the other.
ask_areas <- function(fit, options, ask, tests = names(fit$study$tests)) {
  areas <- which(has_both_states(fit) & fit$areas$test %in% tests)
  if (length(areas) == 0) fail("no test has positive and negative cases")
  settings <- fit$study$settings
  rows <- lapply(areas, function(i) {
    test <- fit$result$areas$test[i]
    own <- list(level = settings$confidence_level, smaller_is_positive = fit$study$directions[test] == "smaller",
                exclude_cut_off = settings$cut_off == "exclude")
    area <- c(as.list(fit$areas[i, ]), list(subject = subject_of(fit, i), prevalence = prevalences_of(fit)[i]))
    columns <- ask(cases_of(fit, i), utils::modifyList(own, options), area)
    names <- lapply(fit$areas[intersect(c("test", "group"), names(fit$areas))], `[`, i)
    c(lapply(names, rep, max(lengths(columns))), columns)
  })
  below(rows)
}

#' Equal lists of columns one below the other, as a data frame; rbind() takes longer than the questions.
below <- function(frames)
  frame_of(lapply(setNames(nm = names(frames[[1]])), function(column) unlist(lapply(frames, `[[`, column))))

#' Distinct values with their counts; with probability weights the cases themselves.
cases_of <- function(fit, i) {
  study <- fit$study
  if (!has_probabilities(fit)) return(fit$result$summaries[[i]])
  rows <- study$state$codes %in% 0:1
  if (!is.null(study$group)) rows <- rows & study$group$codes %in% fit$result$areas$group_value[i]
  list(value = study$tests[[fit$result$areas$test[i]]][rows], state = study$state$codes[rows],
       weight = study$weight[rows])
}

one_number <- function(value, name) {
  if (!is.numeric(value) || length(value) != 1 || is.na(value)) fail("`", name, "` is one number, not ", shown(value))
  as.double(value)
}

#' NULL for that of the sample.
share <- function(prevalence) if (!is.null(prevalence)) one_number(prevalence, "prevalence")

bootstrap_options <- function(boot.n, seed)
  list(replicates = whole_number(boot.n, "boot.n", 53), seed = whole_number(seed, "seed", 64))

whole_number <- function(value, name, bits) {
  number <- one_number(value, name)
  if (number < 0 || number >= 2^bits || number != round(number))
    fail("`", name, "` is a whole number from 0 to below 2^", bits, ", not ", shown(value))
  number
}

#' As in wilcox.test, TRUE and FALSE say it too.
exactness <- function(exact) {
  if (isTRUE(exact)) return("always")
  if (isFALSE(exact)) return("never")
  choice(exact, "exact")
}

#' In the words of t.test, and in those of the library.
side <- function(alternative) {
  if (identical(alternative, "two-sided")) return(alternative)
  sub(".", "-", choice(alternative, "alternative"), fixed = TRUE)
}

chosen_quantities <- function(ret) {
  if (!is.character(ret) || length(ret) == 0 || !all(ret %in% quantities))
    fail("`ret` is quantities of ", paste(quantities, collapse = ", "), "; it is ", shown(ret))
  unique(ret)
}

#' Cut-offs by test: those of names, or one vector for all; NULL for all of the curves.
named_cut_offs <- function(at, fit) {
  tests <- names(fit$study$tests)
  if (is.null(at)) return(sapply(tests, function(test) NULL, simplify = FALSE))
  by_name <- if (!is.null(names(at))) split(at, factor(names(at), unique(names(at))))
  if (is.list(at)) by_name <- at
  values <- unlist(at, use.names = FALSE)
  if (!is.null(values) && (!is.numeric(values) || anyNA(values)))
    fail("`at` is cut-offs, which are numbers, not ", shown(at), "; best_cut_offs() finds the best")
  if (is.null(by_name)) return(shared_cut_offs(as.double(at), fit, tests))
  wrong <- setdiff(if (is.null(names(by_name))) "" else names(by_name), tests)
  if (length(wrong) > 0) fail("`at` names '", wrong[1], "', which is no test; tests are ", all_of(tests))
  lapply(by_name, as.double)
}

#' One vector may be meant for one of several tests alone.
shared_cut_offs <- function(at, fit, tests) {
  for (test in tests) {
    values <- range(fit$study$tests[[test]], na.rm = TRUE)
    beyond <- at[is.finite(at) & (at < values[1] | at > values[2])]
    if (length(tests) > 1 && length(beyond) > 0)
      fail("`at` is for all tests, and ", shown(beyond[1]), " is beyond the values of ", test, ", ", values[1], " to ",
           values[2], ": give cut-offs by name, as in at = c(", shown_name(tests[1]), " = ", shown(at[1]), ")")
  }
  setNames(rep(list(at), length(tests)), tests)
}

shown_name <- function(name) if (make.names(name) == name) name else paste0("`", name, "`")

say <- function(remarks, code, subject = "", detail = "") .Call(C_add_remark, remarks, code, subject, detail)

#' What there is to say of a part of an area, or of another area: not that it is below 0.5.
say_area <- function(remarks, area, answer) {
  facts <- c(area[c("positive", "negative", "test")], answer[c("std_error", "interval", "percentile", "held")])
  facts$area <- if (is.na(answer$std_error)) answer$area
  .Call(C_add_area_remarks, remarks, area$subject, facts)
}

without <- function(frame, ...) frame[setdiff(names(frame), c(...))]

interval_line <- function(frame, options)
  paste0("Interval: ", all_of(frame$interval), drawn(frame$interval, options), ", level ", options$level)

#' A data frame that prints with what its numbers are: lines of the heading, columns to show, cautions and notes.
answer_table <- function(frame, fit, title, lines, shown, remarks) {
  said <- split_remarks(.Call(C_read_remarks, remarks))
  warn(said$cautions, fit$cautions)
  structure(frame, class = c("vexroc_table", "data.frame"), heading = c(title, states_line(fit$study),
            direction_sentence(names(fit$study$tests), fit$study$directions), lines), shown = shown,
            cautions = said$cautions, notes = said$notes)
}

`$.vexroc_table` <- function(x, name) if (name %in% c("cautions", "notes")) attr(x, name) else NextMethod()

as.data.frame.vexroc_table <- function(x, row.names = NULL, optional = FALSE, stringsAsFactors = FALSE, ...) {
  refuse_others(as.data.frame.vexroc_table, ...)
  with_row_names(frame_of(lapply(setNames(names(x), names(x)), function(column) x[[column]])), row.names)
}

print.vexroc_table <- function(x, digits = 4, n = 20, ...) {
  refuse_others(print.vexroc_table, ...)
  if (is.null(attr(x, "shown"))) return(print(as.data.frame(x), digits = digits)) # a part that someone took of it
  cat(attr(x, "heading"), sep = "\n")
  cat("\n")
  frame <- as.data.frame(x)
  keys <- names(frame)[name_columns(frame)]
  shown <- intersect(attr(x, "shown"), names(frame))
  print_table(with_limits(head(frame, n), c(keys, shown), digits), digits)
  if (nrow(frame) > n) cat("... and ", nrow(frame) - n, " more rows: print(x, n = ", nrow(frame), ")\n", sep = "")
  more <- setdiff(grep("_(lower|upper)$", names(frame), value = TRUE, invert = TRUE), c(keys, shown))
  if (length(more) > 0) cat(strwrap(paste("More columns:", paste(more, collapse = ", ")), exdent = 2), sep = "\n")
  print_remarks(list(cautions = attr(x, "cautions"), notes = attr(x, "notes")))
  invisible(x)
}

#' Columns to show, an estimate and its limits in one cell where the limits are not columns of their own.
with_limits <- function(frame, columns, digits) {
  cell <- function(name) {
    limits <- paste0(name, c("_lower", "_upper"))
    if (!all(limits %in% names(frame)) || any(limits %in% columns)) return(frame[[name]])
    both <- paste0(" (", short(frame[[limits[1]]], digits), " to ", short(frame[[limits[2]]], digits), ")")
    paste0(short(frame[[name]], digits), ifelse(is.na(frame[[limits[1]]]), "", both))
  }
  frame_of(setNames(lapply(columns, cell), columns))
}

#' Texts with as many decimals below 10, fewer above, and two digits of what would look like 0.
short <- function(x, digits) {
  size <- pmax(floor(log10(abs(x))), 0)
  decimals <- ifelse(is.finite(size), pmax(digits - 1 - size, 0), 0)
  texts <- sprintf("%.*f", as.integer(ifelse(x %in% 0, digits - 1, decimals)), x)
  tiny <- is.finite(x) & x != 0 & abs(x) < 10^(1 - digits)
  texts[tiny] <- sprintf("%.2g", x[tiny])
  texts
}
