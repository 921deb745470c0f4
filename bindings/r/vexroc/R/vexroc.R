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

vexroc <- function(x, ...) UseMethod("vexroc")

vexroc.formula <- function(x, data = parent.frame(), ...) {
  if (length(x) != 3) stop("the formula needs a state on its left side, such as diagnosis ~ radius")
  parts <- split_bar(x)
  frame <- model.frame(parts$formula, data, na.action = NULL)
  group <- if (!is.null(parts$group)) eval(parts$group, data, environment(x))
  vexroc.default(frame[-1], state = frame[[1]], group = group,
                 group_name = if (!is.null(parts$group)) deparse(parts$group), call = sys.call(-1), ...)
}

vexroc.default <- function(x, state, positive = NULL, group = NULL, weight = NULL,
                           direction = c("larger", "smaller"), cut_off = c("include", "exclude"),
                           distribution = c("nonparam", "bi-negative"),
                           interpolation = c("davis-goadrich", "keilwagen"), level = 0.95, pr = FALSE,
                           group_name = "group", call = sys.call(), ...) {
  if (...length() > 0) stop("unknown argument: ", paste(...names(), collapse = ", "))
  tests <- numeric_tests(x)
  positive <- positive_value(state, positive)
  study <- list(tests = tests, state = state, positive = positive, group = group, weight = weight,
                group_name = group_name,
                settings = list(direction = match.arg(direction), cut_off = match.arg(cut_off),
                                distribution = match.arg(distribution), interpolation = match.arg(interpolation),
                                confidence_level = level, pr = as.numeric(pr)))
  result <- run_study(study, "none")
  structure(list(call = call, study = study, areas = area_frame(result, study), result = result,
                 warnings = result$warnings, left_out = result$left_out),
            class = "vexroc")
}

numeric_tests <- function(x) {
  tests <- if (is.data.frame(x)) as.list(x) else if (is.list(x)) x else list(test = x)
  if (length(tests) == 0) stop("no test variable is given")
  if (is.null(names(tests))) names(tests) <- paste0("test", seq_along(tests))
  for (name in names(tests))
    if (!is.numeric(tests[[name]]) && !is.logical(tests[[name]]))
      stop("test '", name, "' is of class ", class(tests[[name]])[1], "; tests are numbers")
  lapply(tests, as.double)
}

#' The positive state: as given, or the larger of two values, the last of two levels.
positive_value <- function(state, positive) {
  values <- if (is.factor(state)) levels(state) else sort(unique(state[!is.na(state)]))
  if (is.null(positive)) {
    if (length(values) != 2)
      stop("the state has ", length(values), " values: name the positive one with `positive`")
    positive <- values[2]
  }
  if (length(positive) != 1 || !(as.character(positive) %in% as.character(values)))
    stop("the state is never ", paste(positive, collapse = ", "), "; it is ",
         paste(head(values, 10), collapse = ", "))
  positive
}

group_codes <- function(group) {
  values <- if (is.factor(group)) levels(group)[levels(group) %in% group] else sort(unique(group[!is.na(group)]))
  if (length(values) != 2) stop("the group has ", length(values), " values; groups are two")
  list(codes = as.double(match(as.character(group), as.character(values)) - 1), values = as.character(values))
}

run_study <- function(study, comparison) {
  rows <- length(study$state)
  columns <- c(list(state = as.double(study$state == study$positive)), study$tests)
  parts <- c(state = 1L, setNames(seq_along(study$tests) + 1L, rep("test", length(study$tests))))
  settings <- c(study$settings, list(comparison = comparison))
  add <- function(part, column) {
    columns[[length(columns) + 1L]] <<- column
    names(columns)[length(columns)] <<- part
    parts <<- c(parts, setNames(length(columns), part))
  }
  if (!is.null(study$group)) {
    add("group", group_codes(study$group)$codes)
    settings <- c(settings, list(group_first = 0, group_second = 1))
  }
  if (!is.null(study$weight)) add("weight", as.double(study$weight))
  lengths <- lengths(columns)
  if (any(lengths != rows))
    stop("'", names(columns)[lengths != rows][1], "' has ", lengths[lengths != rows][1], " values; the state has ", rows)
  known <- complete.cases(columns[names(parts) != "test"])
  if (!all(known)) columns <- lapply(columns, function(column) column[known])
  result <- .Call(C_analyze, columns, parts, settings)
  if (is.null(result)) {
    signalCondition(structure(class = c("interrupt", "condition"), list(message = "", call = NULL)))
    invokeRestart("abort")
  }
  result$left_out <- sum(!known)
  result
}

#' A data frame of equally long columns; data.frame() takes longer than the analysis of a thousand cases.
frame_of <- function(columns)
  structure(columns, class = "data.frame", row.names = .set_row_names(length(columns[[1]])))

labels_of <- function(result, study) {
  groups <- if (!is.null(study$group)) group_codes(study$group)$values
  list(test = names(study$tests)[result$areas$test - 1],
       group = if (is.null(groups)) NULL else ifelse(result$areas$group == 0, NA, groups[result$areas$group_value + 1]))
}

area_frame <- function(result, study) {
  labels <- labels_of(result, study)
  areas <- result$areas[setdiff(names(result$areas), c("test", "group", "group_value",
                                                       if (is.null(study$weight)) c("weighted_positive", "weighted_negative")))]
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
  method <- match.arg(method, c("paired", "independent"))
  if (method == "paired" && length(study$tests) < 2) stop("a paired comparison needs two tests")
  if (method == "independent" && is.null(study$group)) stop("an independent comparison needs a group")
  if (method == "paired") study["group"] <- list(NULL)
  study$settings$pr <- 0
  study$settings$roc <- 0
  result <- run_study(study, method)
  labels <- labels_of(result, study)
  pair <- result$comparisons
  ends <- if (method == "paired")
    list(first = labels$test[pair$first], second = labels$test[pair$second])
  else
    list(test = labels$test[pair$first], first = labels$group[pair$first], second = labels$group[pair$second])
  areas <- result$areas$area
  frame <- frame_of(c(ends, list(area1 = areas[pair$first], area2 = areas[pair$second]),
                      pair[c("difference", "std_error", "z", "significance", "lower", "upper")]))
  structure(list(method = method, comparisons = frame, areas = area_frame(result, study),
                 level = study$settings$confidence_level),
            class = "vexroc_comparison")
}

as.data.frame.vexroc <- function(x, row.names = NULL, optional = FALSE,
                                 what = c("areas", "curve", "precision_recall"), ...) {
  switch(match.arg(what), areas = x$areas, curve = point_frame(x$result$curves, x$result, x$study),
         precision_recall = point_frame(x$result$precision_recall, x$result, x$study))
}

as.data.frame.vexroc_comparison <- function(x, row.names = NULL, optional = FALSE, ...) x$comparisons

curve_names <- function(areas) if (is.null(areas$group)) areas$test else paste(areas$test, areas$group, sep = ", ")

confint.vexroc <- function(object, parm, level = object$study$settings$confidence_level, ...) {
  if (level != object$study$settings$confidence_level) {
    study <- object$study
    study$settings$confidence_level <- level
    object$areas <- area_frame(run_study(study, "none"), study)
  }
  tails <- paste(format(100 * c((1 - level) / 2, (1 + level) / 2), trim = TRUE, digits = 3), "%")
  bounds <- matrix(c(object$areas$lower, object$areas$upper), ncol = 2,
                   dimnames = list(curve_names(object$areas), tails))
  if (missing(parm)) bounds else bounds[parm, , drop = FALSE]
}

heading <- function(x) {
  settings <- x$study$settings
  cat("ROC analysis; positive: ", format(x$study$positive), "; ", settings$direction, " values are more positive\n", sep = "")
  if (x$left_out > 0) cat("Rows left out, as state, group or weight is missing: ", x$left_out, "\n", sep = "")
}

rounded <- function(frame, digits) {
  frame$significance <- format.pval(frame$significance, digits = digits, eps = 1e-4)
  frame
}

print.vexroc <- function(x, digits = 4, ...) {
  heading(x)
  columns <- intersect(c("test", "group", "positive", "negative", "area", "std_error", "significance", "lower", "upper"),
                       names(x$areas))
  print(rounded(x$areas[columns], digits), digits = digits, row.names = FALSE, ...)
  invisible(x)
}

summary.vexroc <- function(object, ...) structure(list(object = object), class = "summary.vexroc")

print.summary.vexroc <- function(x, digits = 4, ...) {
  heading(x$object)
  cat("Confidence level ", x$object$study$settings$confidence_level, "; standard error: ",
      x$object$study$settings$distribution, "\n\n", sep = "")
  print(rounded(x$object$areas, digits), digits = digits, row.names = FALSE)
  for (warning in x$object$warnings) cat("warning:", warning, "\n")
  invisible(x)
}

print.vexroc_comparison <- function(x, digits = 4, ...) {
  cat("Comparison of areas, ", if (x$method == "paired") "paired (DeLong)" else "independent groups",
      "; confidence level ", x$level, "\n", sep = "")
  print(rounded(x$comparisons, digits), digits = digits, row.names = FALSE, ...)
  invisible(x)
}

#' Colours that people with any kind of colour vision tell apart (Okabe and Ito 2008).
palette_okabe_ito <- c("#0072B2", "#D55E00", "#009E73", "#CC79A7", "#E69F00", "#56B4E9", "#000000", "#F0E442")

plot.vexroc <- function(x, legend = TRUE, ...) {
  old <- par(pty = "s")
  on.exit(par(old))
  plot(c(0, 1), c(0, 1), type = "n", xlab = "1 - specificity", ylab = "sensitivity", xaxs = "i", yaxs = "i", ...)
  abline(0, 1, lty = 2, col = "grey50")
  names <- curve_names(x$areas)
  colours <- rep_len(palette_okabe_ito, length(names))
  for (i in seq_along(names)) {
    points <- x$result$curves[[i]]
    lines(1 - points$specificity, points$sensitivity, col = colours[i], lwd = 2)
  }
  if (legend)
    graphics::legend("bottomright", bty = "n", col = colours, lwd = 2,
                     legend = sprintf("%s: %.3f (%.3f to %.3f)", names, x$areas$area, x$areas$lower, x$areas$upper))
  invisible(x)
}
