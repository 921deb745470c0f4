compare <- function(x, ...) UseMethod("compare")

compare.vexroc <- function(x, method = NULL, cases = c("pairwise", "complete"),
                           alternative = c("two.sided", "greater", "less"),
                           level = x$study$settings$confidence_level, conf.level = level, ...) {
  refuse_others(compare.vexroc, ...)
  study <- x$study
  if (is.null(method)) method <- if (is.null(study$group)) "paired" else "independent"
  if (!isTRUE(method %in% c("paired", "independent")))
    fail("`method` is \"paired\" or \"independent\", not ", shown(method))
  if (method == "paired" && length(study$tests) < 2) fail("a paired comparison needs two tests")
  if (method == "independent" && is.null(study$group))
    fail("an independent comparison needs a group, such as in diagnosis ~ radius | sex")
  ignored <- if (method == "paired" && !is.null(study$group)) "groups-ignored"
  if (method == "paired") study["group"] <- list(NULL)
  study$settings$cases <- choice(cases, "cases", compare.vexroc)
  study$settings$alternative <- side(alternative)
  study$settings$confidence_level <- one_level(level, conf.level, missing(level) || missing(conf.level))
  study$settings$pr <- study$settings$roc <- study$settings$summaries <- 0
  result <- run_study(study, method, ignored)
  warn(result$cautions, x$cautions)
  areas <- area_frame(result, study)
  structure(list(method = method, comparisons = comparison_frame(result$comparisons, areas, method), areas = areas,
                 study = study, cautions = result$cautions, notes = result$notes, left_out = result$left_out),
            class = "vexroc_comparison")
}

comparison_frame <- function(pairs, areas, method) {
  first <- pairs$first + 1
  second <- pairs$second + 1
  ends <- if (method == "paired") list(test1 = areas$test[first], test2 = areas$test[second])
          else list(test = areas$test[first], group1 = areas$group[first], group2 = areas$group[second])
  frame_of(c(ends, pairs[!names(pairs) %in% c("first", "second")]))
}

print.vexroc_comparison <- function(x, digits = 4, ...) {
  refuse_others(print.vexroc_comparison, ...)
  cases <- c(pairwise = "the cases of every two tests", complete = "the cases of all tests")[x$study$settings$cases]
  heading(x$study, paste("Comparison of areas,",
                         if (x$method == "paired") paste("paired, on", cases) else "independent groups"),
          paste0("Standard error: ", all_of(x$comparisons$error), "; interval: wald, level ",
                 x$study$settings$confidence_level, "; p value: wald, ", all_of(x$comparisons$alternative)))
  columns <- c("test", "group", "positive", "negative", "left_out", "area", "std_error")
  print_table(x$areas[intersect(columns, names(x$areas))], digits)
  cat("\n")
  hidden <- "^(area|std_error)[12]$|^(log10_p|error|alternative)$"
  pairs <- x$comparisons[grep(hidden, names(x$comparisons), invert = TRUE)]
  names(pairs) <- sub("_difference$", "", names(pairs))
  print_table(pairs, digits)
  print_remarks(x)
  invisible(x)
}
