#' What stands in the second place of `a | b` on the right side of a formula; NULL without it.
split_bar <- function(formula) {
  right <- formula[[3]]
  if (is.call(right) && identical(right[[1]], as.name("|"))) {
    group <- right[[3]]
    formula[[3]] <- right[[2]]
    list(formula = formula, group = group)
  } else {
    list(formula = formula, group = NULL)
  }
}

fail <- function(...) stop(..., call. = FALSE)

#' One of the words that the argument `name` of the function `of` has by default.
choice <- function(value, name, of = vexroc.default) {
  choices <- eval(formals(of)[[name]])
  if (identical(value, choices)) return(choices[1])
  tryCatch(match.arg(value, choices),
           error = function(e) fail("`", name, "` is ", paste0("\"", choices, "\"", collapse = " or "),
                                    ", not ", deparse(value, nlines = 1)))
}

confidence_level <- function(level) {
  if (!is.numeric(level) || length(level) != 1 || !isTRUE(level > 0 && level < 1))
    fail("`level` is one number between 0 and 1, such as 0.95, not ", deparse(level, nlines = 1))
  level
}

vexroc <- function(x, ...) UseMethod("vexroc")

vexroc.formula <- function(x, data = environment(x), group = NULL, weight = NULL, subset = NULL, ...) {
  if (length(x) != 3) fail("the formula needs a state on its left side, such as diagnosis ~ radius")
  inside <- function(expression) eval(expression, data, environment(x))
  parts <- split_bar(x)
  group <- substitute(group)
  if (!is.null(parts$group) && !is.null(group)) fail("the group is given twice: after | and as `group`")
  if (is.null(group)) group <- parts$group
  columns <- formula_columns(parts$formula, data, group)
  study <- list(tests = columns$tests, state = columns$state, group = inside(group),
                weight = inside(substitute(weight)))
  rows <- inside(substitute(subset))
  if (!is.null(rows)) study <- subset_study(study, rows)
  call <- match.call()
  call[[1]] <- as.name("vexroc")
  vexroc.default(study$tests, study$state, group = study$group, weight = study$weight, call = call, ...)
}

#' State and tests of a formula, whose terms add and remove columns as in lm; `.` stands for all columns but the group.
formula_columns <- function(formula, data, group) {
  terms <- stats::terms(formula, data = if (is.data.frame(data)) data)
  if (any(attr(terms, "order") > 1)) fail("the formula has an interaction; tests are joined by +")
  labels <- attr(terms, "term.labels")
  if ("." %in% all.vars(formula[[3]])) labels <- setdiff(labels, deparse(group, backtick = TRUE))
  frame <- model.frame(terms, data, na.action = NULL)
  at <- vapply(labels, function(label) which(attr(terms, "factors")[, label] > 0), 0L)
  list(state = frame[[1]], tests = as.list(frame[at]))
}

subset_study <- function(study, rows) {
  if (is.logical(rows)) rows <- rows & !is.na(rows)
  pick <- function(column) if (is.matrix(column)) column[rows, , drop = FALSE] else column[rows]
  study$tests <- lapply(study$tests, pick)
  study[-1] <- lapply(study[-1], pick)
  study
}

vexroc.default <- function(x, state, positive = NULL, group = NULL, groups = NULL, weight = NULL,
                           direction = c("larger", "smaller"), cut_off = c("include", "exclude"),
                           distribution = c("nonparam", "bi-negative"),
                           interpolation = c("davis-goadrich", "keilwagen"), level = 0.95, pr = FALSE,
                           call = match.call(), ...) {
  if (...length() > 0) fail("unknown argument: ", paste(...names(), collapse = ", "))
  if (missing(state)) fail("the state is missing: vexroc(tests, state), or vexroc(state ~ test, data)")
  if (!isTRUE(pr) && !isFALSE(pr)) fail("`pr` is TRUE or FALSE, not ", deparse(pr, nlines = 1))
  settings <- list(direction = choice(direction, "direction"), cut_off = choice(cut_off, "cut_off"),
                   distribution = choice(distribution, "distribution"),
                   interpolation = choice(interpolation, "interpolation"),
                   confidence_level = confidence_level(level), pr = as.numeric(pr))
  state <- state_codes(state, positive)
  study <- list(tests = numeric_tests(x), state = state$codes, positive = state$positive,
                group = if (!is.null(group)) group_codes(group, groups), weight = weight, settings = settings)
  check_columns(study)
  result <- run_study(study, "none")
  structure(list(call = call, study = study, areas = area_frame(result, study), result = result,
                 warnings = result$warnings, left_out = result$left_out),
            class = "vexroc")
}

#' Tests by name; a matrix is a test per column.
numeric_tests <- function(x) {
  tests <- if (is.list(x)) as.list(x) else list(test = x)
  names <- if (is.null(names(tests))) rep("", length(tests)) else names(tests)
  unnamed <- is.na(names) | names == ""
  names[unnamed] <- paste0("test", which(unnamed), recycle0 = TRUE)
  names(tests) <- names
  if (any(vapply(tests, is.matrix, NA))) tests <- do.call(c, unname(Map(columns_of, tests, names)))
  if (length(tests) == 0) fail("no test variable is given")
  for (i in seq_along(tests))
    if (!is.numeric(tests[[i]]) && !is.logical(tests[[i]]))
      fail("test '", names(tests)[i], "' is of class ", class(tests[[i]])[1], "; tests are numbers")
  lapply(tests, as.double)
}

columns_of <- function(column, name) {
  if (!is.matrix(column)) return(setNames(list(column), name))
  names <- if (is.null(colnames(column))) paste0(name, seq_len(ncol(column)), recycle0 = TRUE) else colnames(column)
  setNames(lapply(seq_len(ncol(column)), function(i) column[, i]), names)
}

#' The values that occur, in an order that no locale changes.
distinct <- function(x) {
  if (is.factor(x)) levels(x)[tabulate(x, nlevels(x)) > 0] else sort(unique(x), method = "radix")
}

#' Values as text; numbers that differ after the fifteenth digit do so here too.
value_labels <- function(values) {
  labels <- as.character(values)
  if (anyDuplicated(labels)) sprintf("%.17g", values) else labels
}

listed <- function(values)
  paste(c(head(value_labels(values), 10), if (length(values) > 10) "..."), collapse = ", ")

check_vector <- function(x, name)
  if (!is.atomic(x))
    fail("the ", name, " is of class ", class(x)[1], "; it is a factor, text, numbers or logical values")

#' 1 for the positive state, 0 for any other. When it is not given, it is the last of two levels, or the larger of two
#' numbers; of text, whose order is the locale's, it has to be given.
state_codes <- function(state, positive) {
  check_vector(state, "state")
  values <- if (nlevels(state) == 2) levels(state) else distinct(state)
  if (length(state) > 0 && length(values) == 0) fail("the state of every case is missing")
  if (is.null(positive)) {
    if (length(state) > 0 && (length(values) != 2 || is.character(state)))
      fail("the state has the values ", listed(values), ": name the positive one with `positive`",
           ", such as positive = ", deparse(values[length(values)]))
    positive <- values[2]
  }
  at <- match(positive, values)
  if (length(state) > 0 && (length(positive) != 1 || is.na(at)))
    fail("the state is never ", listed(positive), "; it is ", listed(values))
  list(codes = as.double(match(state, values) == at), positive = value_labels(values)[at])
}

#' 0 and 1 for the two groups, in the order in which they are named; 2 for others, NA for none.
group_codes <- function(group, groups) {
  check_vector(group, "group")
  values <- distinct(group)
  if (length(group) > 0 && length(values) < 2)
    fail("the group has ", if (length(values) == 0) "no value" else c("only the value ", listed(values)),
         "; groups are two")
  if (is.null(groups) && length(values) > 2)
    fail("the group has the values ", listed(values), "; name two of them with `groups`")
  at <- if (is.null(groups)) 1:2 else match(groups, values)
  if (length(at) != 2 || anyNA(at) || at[1] == at[2])
    fail("`groups` names two values of the group, which has ", listed(values), "; it is ", listed(groups))
  codes <- as.double(match(match(group, values), at, nomatch = 3L) - 1)
  codes[is.na(group)] <- NA
  list(codes = codes, values = value_labels(values)[at])
}

check_columns <- function(study) {
  rows <- length(study$state)
  if (rows == 0) fail("there is no case: the state is empty")
  if (!is.null(study$weight) && !is.numeric(study$weight))
    fail("the weight is of class ", class(study$weight)[1], "; it is a number of cases")
  lengths <- lengths(c(study$tests, list(group = study$group$codes, weight = study$weight)))
  wrong <- lengths != rows & !(names(lengths) %in% c("group", "weight") & lengths == 0)
  if (any(wrong))
    fail("'", names(lengths)[wrong][1], "' has ", lengths[wrong][1], " values; the state has ", rows)
}

#' Numbers of the rows that do not enter, by the first reason that holds.
rows_left_out <- function(rows) {
  counts <- c("without state" = rows$missing_state, "without group" = rows$missing_group,
              "of other groups" = rows$other_group, "without weight" = rows$missing_weight,
              "with a weight below 1" = rows$too_light, "with a weight beyond 2147483647" = rows$too_heavy)
  if (any(counts > 0)) counts[counts > 0] else integer()
}

run_study <- function(study, comparison) {
  columns <- c(list(state = study$state), study$tests, if (!is.null(study$group)) list(group = study$group$codes),
               if (!is.null(study$weight)) list(weight = as.double(study$weight)))
  parts <- c("state", rep("test", length(study$tests)), if (!is.null(study$group)) "group",
             if (!is.null(study$weight)) "weight")
  settings <- c(study$settings, comparison = comparison,
                if (!is.null(study$group)) list(group_first = 0, group_second = 1))
  result <- .Call(C_analyze, columns, setNames(seq_along(parts), parts), settings)
  if (is.null(result)) {
    signalCondition(structure(class = c("interrupt", "condition"), list(message = "", call = NULL)))
    invokeRestart("abort")
  }
  left_out <- rows_left_out(result$rows)
  if (!is.null(result$status)) fail(status_sentence(result$status, result$name), left_out_sentence(left_out))
  result$left_out <- left_out
  result$warnings <- c(warning_sentences(result$warnings, names(study$tests)), rounding_note(result$rows$rounded))
  result
}

status_sentence <- function(status, name) {
  sentence <- switch(as.character(status),
    "430004" = "no case with the positive state is left",
    "430010" = "no case is left",
    "430011" = "an independent comparison needs two groups, but all values of the group are equal",
    "430012" = "an independent comparison needs cases of every test in both groups",
    "the analysis broke off")
  paste0(sentence, " (", status, " ", name, ")")
}

#' Named by their codes.
warning_sentences <- function(warnings, tests) {
  if (length(warnings$code) == 0) return(character())
  sentence <- function(code, name, parameters) paste0(switch(as.character(code),
    "430102" = paste0("positive and negative cases share values, which count half, in ",
                      paste(tests[parameters], collapse = ", ")),
    "430103" = "positive and negative cases are not equally many everywhere: all standard errors are nonparametric",
    "430104" = "the group is not used: results are over all cases",
    "the library warns"), " (", code, " ", name, ")")
  setNames(as.character(Map(sentence, warnings$code, warnings$name, warnings$parameters)), warnings$code)
}

rounding_note <- function(rounded)
  if (rounded > 0) c(rounded = paste("weights that are not whole numbers, rounded with halves up:", rounded))

left_out_sentence <- function(counts)
  if (length(counts) > 0)
    paste0("\nRows left out: ", sum(counts), " (", paste(counts, names(counts), collapse = ", "), ")")

#' A data frame of equally long columns; data.frame() takes longer than the analysis of a thousand cases.
frame_of <- function(columns)
  structure(columns, class = "data.frame", row.names = .set_row_names(length(columns[[1]])))

labels_of <- function(result, study) {
  list(test = names(study$tests)[result$areas$test - 1],
       group = if (!is.null(study$group)) study$group$values[result$areas$group_value + 1])
}

area_frame <- function(result, study) {
  labels <- labels_of(result, study)
  columns <- c("positive", "negative", if (!is.null(study$weight)) c("weighted_positive", "weighted_negative"),
               "left_out", "area", "std_error", "significance", "lower", "upper", "gini", "ks", "ks_cut_off", "ties")
  areas <- result$areas[columns]
  areas$ties <- areas$ties != 0
  none <- areas$ks < 0
  areas$ks[none] <- areas$ks_cut_off[none] <- NA
  frame_of(c(labels[!vapply(labels, is.null, NA)], areas))
}

#' The points of all curves, one below the other.
point_frame <- function(curves, result, study) {
  labels <- labels_of(result, study)
  rows <- vapply(curves, function(curve) length(curve[[1]]), 0L)
  if (sum(rows) == 0) return(NULL)
  points <- lapply(names(curves[[1]]), function(column) unlist(lapply(curves, `[[`, column)))
  names(points) <- names(curves[[1]])
  if (!is.null(points$interpolated)) points$interpolated <- points$interpolated != 0
  frame_of(c(lapply(labels[!vapply(labels, is.null, NA)], rep, times = rows), points))
}

compare <- function(x, ...) UseMethod("compare")

compare.vexroc <- function(x, method = NULL, ...) {
  study <- x$study
  if (is.null(method)) method <- if (is.null(study$group)) "paired" else "independent"
  if (!isTRUE(method %in% c("paired", "independent")))
    fail("`method` is \"paired\" or \"independent\", not ", deparse(method, nlines = 1))
  if (method == "paired" && length(study$tests) < 2) fail("a paired comparison needs two tests")
  if (method == "independent" && is.null(study$group))
    fail("an independent comparison needs a group, such as in diagnosis ~ radius | sex")
  if (method == "paired") study["group"] <- list(NULL)
  study$settings$pr <- 0
  study$settings$roc <- 0
  result <- run_study(study, method)
  areas <- area_frame(result, study)
  pair <- result$comparisons
  ends <- if (method == "paired")
    list(first = areas$test[pair$first], second = areas$test[pair$second])
  else
    list(test = areas$test[pair$first], first = areas$group[pair$first], second = areas$group[pair$second])
  frame <- frame_of(c(ends, list(area1 = areas$area[pair$first], area2 = areas$area[pair$second]),
                      pair[c("difference", "std_error", "z", "significance", "lower", "upper")]))
  structure(list(method = method, comparisons = frame, areas = areas, study = study, warnings = result$warnings,
                 left_out = result$left_out),
            class = "vexroc_comparison")
}

as.data.frame.vexroc <- function(x, row.names = NULL, optional = FALSE,
                                 what = c("areas", "curve", "precision_recall"), ...) {
  what <- choice(what, "what", as.data.frame.vexroc)
  if (what == "areas") x$areas else point_frame(curves_of(x, what), x$result, x$study)
}

as.data.frame.vexroc_comparison <- function(x, row.names = NULL, optional = FALSE, ...) x$comparisons

curves_of <- function(x, what) {
  if (what == "curve") return(x$result$curves)
  if (x$study$settings$pr == 0) fail("precision-recall curves were not asked for: vexroc(..., pr = TRUE) computes them")
  x$result$precision_recall
}

curve_names <- function(areas) if (is.null(areas$group)) areas$test else paste(areas$test, areas$group, sep = ", ")

confint.vexroc <- function(object, parm, level = object$study$settings$confidence_level, ...) {
  if (confidence_level(level) != object$study$settings$confidence_level) {
    study <- object$study
    study$settings$confidence_level <- level
    object$areas <- area_frame(run_study(study, "none"), study)
  }
  tails <- paste(format(100 * c((1 - level) / 2, (1 + level) / 2), trim = TRUE, digits = 3), "%")
  bounds <- matrix(c(object$areas$lower, object$areas$upper), ncol = 2,
                   dimnames = list(curve_names(object$areas), tails))
  if (missing(parm)) return(bounds)
  tryCatch(bounds[parm, , drop = FALSE],
           error = function(e) fail("`parm` is ", listed(parm), "; there are the areas of ", listed(rownames(bounds))))
}

#' The assumption in force, which may be another than the one asked for.
standard_error <- function(x) {
  if (identical(x$method, "paired")) return("DeLong")
  asked <- x$study$settings$distribution
  if (asked == "nonparam" || "430103" %in% names(x$warnings)) "nonparametric" else asked
}

heading <- function(x, title) {
  settings <- x$study$settings
  cat(title, "\nPositive: ", x$study$positive, "; ", settings$direction, " values are more positive\n", sep = "")
  cat("Standard error: ", standard_error(x), "; confidence level ",
      settings$confidence_level, left_out_sentence(x$left_out), "\n\n", sep = "")
}

rounded <- function(frame, digits) {
  frame$significance <- format.pval(frame$significance, digits = digits, eps = 1e-4)
  frame
}

print_table <- function(frame, digits, ...) print(rounded(frame, digits), digits = digits, row.names = FALSE, ...)

print_warnings <- function(warnings) for (warning in warnings) cat("warning: ", warning, "\n", sep = "")

print.vexroc <- function(x, digits = 4, ...) {
  heading(x, "Areas under ROC curves")
  columns <- intersect(c("test", "group", "positive", "negative", "left_out", "area", "std_error", "significance",
                         "lower", "upper"), names(x$areas))
  print_table(x$areas[columns], digits, ...)
  print_warnings(x$warnings[names(x$warnings) != "430102"]) # nearly all data have ties: summary() tells them
  invisible(x)
}

summary.vexroc <- function(object, ...) structure(list(object = object), class = "summary.vexroc")

print.summary.vexroc <- function(x, digits = 4, ...) {
  heading(x$object, "Areas under ROC curves")
  print_table(x$object$areas, digits)
  print_warnings(x$object$warnings)
  invisible(x)
}

print.vexroc_comparison <- function(x, digits = 4, ...) {
  heading(x, paste("Comparison of areas,", if (x$method == "paired") "paired" else "independent groups"))
  print(x$areas[intersect(c("test", "group", "positive", "negative", "left_out", "area", "std_error"), names(x$areas))],
        digits = digits, row.names = FALSE, ...)
  cat("\n")
  print_table(x$comparisons[setdiff(names(x$comparisons), c("area1", "area2"))], digits, ...)
  print_warnings(x$warnings)
  invisible(x)
}

#' Colours that people with any kind of colour vision tell apart (Okabe and Ito 2008).
palette_okabe_ito <- c("#0072B2", "#D55E00", "#009E73", "#CC79A7", "#E69F00", "#56B4E9", "#000000", "#F0E442")

plot.vexroc <- function(x, what = c("curve", "precision_recall"), legend = !add, add = FALSE, col = NULL, lty = 1,
                        lwd = 2, ...) {
  what <- choice(what, "what", plot.vexroc)
  curves <- lapply(curves_of(x, what), if (what == "curve") roc_points else pr_points)
  if (!add) empty_plot(what, ...)
  names <- curve_names(x$areas)
  col <- rep_len(if (is.null(col)) palette_okabe_ito else col, length(names))
  for (i in seq_along(names)) lines(curves[[i]], col = col[i], lty = rep_len(lty, i)[i], lwd = rep_len(lwd, i)[i])
  areas <- sprintf("%s: %.3f (%.3f to %.3f)", names, x$areas$area, x$areas$lower, x$areas$upper)
  if (legend)
    graphics::legend(if (what == "curve") "bottomright" else "bottomleft", bty = "n", col = col, lty = lty, lwd = lwd,
                     legend = if (what == "curve") areas else names)
  invisible(x)
}

roc_points <- function(curve) list(x = 1 - curve$specificity, y = curve$sensitivity)
pr_points <- function(curve) list(x = curve$recall, y = curve$precision)

#' The square in which curves are drawn; the caller's arguments of plot() win.
empty_plot <- function(what, ...) {
  old <- par(pty = "s")
  on.exit(par(old))
  labels <- if (what == "curve") c("1 - specificity", "sensitivity") else c("recall", "precision")
  arguments <- list(x = c(0, 1), y = c(0, 1), xlab = labels[1], ylab = labels[2], xaxs = "i", yaxs = "i")
  do.call(plot, utils::modifyList(utils::modifyList(arguments, list(...)), list(type = "n")))
  if (what == "curve") abline(0, 1, lty = 2, col = "grey50")
}
