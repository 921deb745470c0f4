#' A data frame of equally long columns; data.frame() takes longer than the analysis of a thousand cases.
frame_of <- function(columns)
  structure(columns, class = "data.frame", row.names = .set_row_names(length(columns[[1]])))

labels_of <- function(result, study)
  c(list(test = names(study$tests)[result$areas$test]),
    if (!is.null(study$group)) list(group = study$group$values[result$areas$group_value + 1]))

area_frame <- function(result, study) {
  columns <- c("positive", "negative", if (!is.null(study$weight)) c("weighted_positive", "weighted_negative"),
               "left_out", "area", "std_error", "error", "lower", "upper", "interval", "p_value", "log10_p",
               "p_method", "null_area", "alternative", "gini",
               if (!identical(study$settings$roc, 0)) c("max_ks", "max_ks_cut_off"), "ties")
  none <- result$areas$max_ks < 0
  result$areas$max_ks[none] <- result$areas$max_ks_cut_off[none] <- NA
  areas <- result$areas[columns]
  areas$ties <- areas$ties != 0
  frame_of(c(labels_of(result, study), areas))
}

#' The points of all curves, one below the other.
point_frame <- function(curves, result, study) {
  rows <- vapply(curves, function(curve) length(curve[[1]]), 0L)
  if (sum(rows) == 0) return(NULL)
  points <- lapply(names(curves[[1]]), function(column) unlist(lapply(curves, `[[`, column)))
  names(points) <- names(curves[[1]])
  frame_of(c(lapply(labels_of(result, study), rep, times = rows), points))
}

#' Points between measured ones have no cut-off.
pr_curve <- function(points, curve)
  list(cut_off = curve$cut_off[points$curve_row], precision = points$precision, recall = points$recall,
       interpolated = is.na(points$curve_row))

curves_of <- function(x, what) {
  if (what == "curve") return(x$result$curves)
  if (x$study$settings$pr == 0) fail("precision-recall curves were not asked for: vexroc(..., pr = TRUE) computes them")
  Map(pr_curve, x$result$precision_recall, x$result$curves)
}

#' Arguments of the generic that a method takes and does not use.
with_row_names <- function(frame, names) {
  if (!is.null(names)) rownames(frame) <- names
  frame
}

as.data.frame.vexroc <- function(x, row.names = NULL, optional = FALSE,
                                 what = c("areas", "curve", "precision_recall"), stringsAsFactors = FALSE, ...) {
  refuse_others(as.data.frame.vexroc, ...)
  what <- choice(what, "what", as.data.frame.vexroc)
  with_row_names(if (what == "areas") x$areas else point_frame(curves_of(x, what), x$result, x$study), row.names)
}

as.data.frame.vexroc_comparison <- function(x, row.names = NULL, optional = FALSE, stringsAsFactors = FALSE, ...) {
  refuse_others(as.data.frame.vexroc_comparison, ...)
  with_row_names(x$comparisons, row.names)
}

curve_names <- function(areas) if (is.null(areas$group)) areas$test else paste(areas$test, areas$group, sep = ", ")

confint.vexroc <- function(object, parm, level = object$study$settings$confidence_level, conf.level = level,
                           ci.method = object$study$settings$interval, ...) {
  refuse_others(confint.vexroc, ...)
  level <- one_level(level, conf.level, missing(level) || missing(conf.level))
  study <- object$study
  study$settings[c("confidence_level", "interval")] <- list(level, choice(ci.method, "ci.method"))
  if (!identical(study$settings, object$study$settings)) {
    result <- run_study(study, "none")
    warn(result$cautions, object$cautions)
    object$areas <- area_frame(result, study)
  }
  tails <- paste(format(100 * c((1 - level) / 2, (1 + level) / 2), trim = TRUE, digits = 3), "%")
  bounds <- matrix(c(object$areas$lower, object$areas$upper), ncol = 2,
                   dimnames = list(curve_names(object$areas), tails))
  if (missing(parm)) return(bounds)
  tryCatch(bounds[parm, , drop = FALSE],
           error = function(e) fail("`parm` is ", listed(parm), "; there are the areas of ", listed(rownames(bounds))))
}

#' What stands above a table: what is positive, and what the numbers are made of.
heading <- function(study, title, ...)
  cat(title, states_line(study), direction_sentence(names(study$tests), study$directions), ..., "", sep = "\n")

states_line <- function(study) paste0("Positive: ", study$state$values[2], "; negative: ", study$state$values[1])

all_of <- function(words) paste(unique(words[!is.na(words) & words != ""]), collapse = ", ")

#' The rules of errors, intervals and p values of areas.
area_rules <- function(areas, settings)
  c(paste0("Interval: ", all_of(areas$interval), drawn(areas$interval, settings), ", level ", settings$confidence_level,
           "; standard error: ", all_of(areas$error)),
    paste0("p value: ", all_of(areas$p_method), ", ", all_of(areas$alternative), ", against the area ",
           all_of(areas$null_area)))

drawn <- function(interval, settings)
  if (any(interval %in% c("bootstrap", "bca", "btii")))
    paste0(" (", settings$replicates, " replicates, seed ", format(settings$seed, digits = 17), ")")

direction_sentence <- function(tests, directions) {
  smaller <- tests[directions == "smaller"]
  if (length(smaller) == length(tests)) return("Smaller values are more positive")
  paste0("Larger values are more positive", if (length(smaller) > 0)
    paste0(", smaller ones of ", paste(smaller, collapse = ", ")))
}

print_table <- function(frame, digits) {
  if (!is.null(frame$p_value))
    frame$p_value <- sub("< ?1e-04", "<0.0001", format.pval(frame$p_value, digits = digits, eps = 1e-4))
  if (all(frame$left_out == 0)) frame$left_out <- NULL
  texts <- format(shorten(frame), digits = digits)
  for (columns in panels(texts)) print(texts[columns], row.names = FALSE)
}

#' Are these what tells the rows apart?
name_columns <- function(frame) grepl("^((test|group)[12]?|criterion|cut_off|threshold)$", names(frame))

#' Long names without their middle, so that they take half of the width at most.
shorten <- function(frame) {
  at <- which(name_columns(frame) & vapply(frame, is.character, NA))
  end <- max(2, getOption("width") %/% 2 %/% max(1, length(at)) %/% 2 - 2)
  frame[at] <- lapply(frame[at], function(names)
    ifelse(nchar(names) <= 2 * end + 3, names,
           paste0(substr(names, 1, end), "...", substring(names, nchar(names) - end + 1))))
  frame
}

#' Columns that fit side by side, each time with what tells the rows apart: R would let that stand in the first only.
panels <- function(texts) {
  names <- name_columns(texts)
  widths <- 1 + mapply(function(column, name) max(nchar(c(column, name), "width")), texts, names(texts))
  room <- getOption("width") - 1 - sum(widths[names])
  panel <- used <- 0
  panel_of <- rep(0, length(texts))
  for (i in which(!names)) {
    used <- used + widths[i]
    if (panel == 0 || used > room) {
      panel <- panel + 1
      used <- widths[i]
    }
    panel_of[i] <- panel
  }
  lapply(seq_len(panel), function(one) which(names | panel_of == one))
}

print_remarks <- function(x) {
  cat(sprintf("caution: %s\n", x$cautions$text), sprintf("note: %s\n", x$notes$text), sep = "")
}

rule_columns <- c("error", "interval", "p_method", "null_area", "alternative")

#' What the heading says, as it holds for all areas.
common_rules <- function(areas) Filter(function(column) length(unique(areas[[column]])) == 1, rule_columns)

print.vexroc <- function(x, digits = 4, ...) {
  refuse_others(print.vexroc, ...)
  heading(x$study, "Areas under ROC curves", area_rules(x$areas, x$study$settings))
  columns <- c("test", "group", "positive", "negative", "left_out", "area", "lower", "upper", "std_error",
               "p_value")
  print_table(x$areas[setdiff(intersect(c(columns, rule_columns), names(x$areas)), common_rules(x$areas))], digits)
  print_remarks(x)
  invisible(x)
}

summary.vexroc <- function(object, ...) {
  refuse_others(summary.vexroc, ...)
  structure(list(object = object), class = "summary.vexroc")
}

print.summary.vexroc <- function(x, digits = 4, ...) {
  refuse_others(print.summary.vexroc, ...)
  heading(x$object$study, "Areas under ROC curves", area_rules(x$object$areas, x$object$study$settings))
  areas <- x$object$areas
  print_table(areas[setdiff(names(areas), common_rules(areas))], digits)
  print_remarks(x$object)
  cat("note: ", remark_line("best-on-same-data"), "\n", sep = "")
  invisible(x)
}
