#' Questions to a fit, which keeps the distinct values of every area with their counts: the data are not needed again.
operating_points <- function(fit, at = NULL, prevalence = NULL, ci.method = c("wilson", "exact", "none"),
                             ret = c("sensitivity", "specificity", "ppv", "npv", "lr_positive", "lr_negative", "dor",
                                     "accuracy", "balanced_accuracy", "f1", "mcc", "youden", "kappa"),
                             level = fit$study$settings$confidence_level, conf.level = level, ...) {
  refuse_others(operating_points, ...)
  check_fit(fit)
  shown <- if (missing(ret)) main_quantities else ret
  ret <- chosen_quantities(ret)
  options <- list(level = one_level(level, conf.level, missing(level) || missing(conf.level)),
                  proportion = choice(ci.method, "ci.method", operating_points), prevalence = share(prevalence))
  at <- named_cut_offs(at, fit)
  remarks <- .Call(C_new_remarks)
  frame <- ask_areas(fit, options, function(cases, options, area) {
    if (is.null(prevalence) && any(c("ppv", "npv") %in% ret)) say_sample_prevalence(remarks, area)
    points_at(cases, options, area, at[[area$test]], ret)
  }, names(at))
  answer_table(frame, fit, "Operating points", c(shares_line(fit, options), prevalence_line(fit, prevalence, ret)),
               shown = shown, remarks = remarks)
}

quantities <- eval(formals(operating_points)$ret)
main_quantities <- quantities[1:4]
cases_columns <- c("positive", "negative", "left_out")

#' Counts and quantities at cut-offs, and the prevalence that ppv and npv hold at.
points_at <- function(cases, options, area, cut_offs, ret) {
  limits <- options$proportion != "none"
  points <- .Call(C_ask_points, cases, if (limits) options else options[names(options) != "proportion"], cut_offs, ret,
                  limits)
  held <- if (is.null(options$prevalence)) area$prevalence else options$prevalence
  append(points, list(prevalence = rep(held, length(points$cut_off))), 5)
}

#' What ppv, npv and all that counts cases of both states hold at.
prevalence_line <- function(fit, prevalence, ret) {
  stated <- if (!is.null(prevalence)) intersect(ret, c("ppv", "npv"))
  of_sample <- intersect(ret, setdiff(c("ppv", "npv", "accuracy", "f1", "mcc", "kappa"), stated))
  lines <- c(if (length(stated) > 0) paste(all_of(stated), "at the prevalence", prevalence),
             if (length(of_sample) > 0) paste(all_of(of_sample), "at", sample_share(fit)))
  if (length(lines) > 0) paste(lines, collapse = "; ")
}

sample_share <- function(fit) {
  shares <- unique(format(prevalences_of(fit)[has_both_states(fit)], digits = 3))
  paste0("the sample's prevalence", if (length(shares) == 1) paste0(" ", shares))
}

prevalence_in_words <- function(fit, prevalence)
  if (is.null(prevalence)) sample_share(fit) else paste("the prevalence", prevalence)

shares_line <- function(fit, options) {
  rule <- options$proportion
  if (has_probabilities(fit)) return(no_weighted)
  if (rule == "none") return("No intervals")
  paste0("Intervals: ", rule, " for shares and f1, square-and-add (", rule, ") for balanced_accuracy and youden,\n",
         "  log for ratios, normal for kappa, level ", options$level)
}

no_weighted <- "No intervals: none is defined for probability weights"

say_sample_prevalence <- function(remarks, area)
  say(remarks, "sample-prevalence", area$subject, format(area$prevalence, digits = 4))

best_cut_offs <- function(fit, method = "youden", cost.ratio = 1, prevalence = NULL, min.sensitivity = 0,
                          min.specificity = 0, ci.method = c("wilson", "exact"),
                          rate.method = c("btii", "bootstrap", "none"), boot.n = 1999, seed = 1,
                          level = fit$study$settings$confidence_level, conf.level = level, ...) {
  refuse_others(best_cut_offs, ...)
  check_fit(fit)
  if (!is.character(method) || length(method) == 0 || anyNA(method))
    fail("`method` is one criterion or several, such as \"youden\" or \"specificity=0.9\", not ", shown(method))
  needs <- function(argument, criterion)
    if (!criterion %in% method) fail("`", argument, "` is of the criterion \"", criterion, "\": name it in `method`")
  if (!missing(cost.ratio)) needs("cost.ratio", "cost")
  if (!missing(min.sensitivity)) needs("min.sensitivity", "youden")
  if (!missing(min.specificity)) needs("min.specificity", "youden")
  options <- c(list(level = one_level(level, conf.level, missing(level) || missing(conf.level)),
                    proportion = choice(ci.method, "ci.method", best_cut_offs), prevalence = share(prevalence),
                    interval = choice(rate.method, "rate.method", best_cut_offs),
                    cost_ratio = one_number(cost.ratio, "cost.ratio"),
                    min_sensitivity = one_number(min.sensitivity, "min.sensitivity"),
                    min_specificity = one_number(min.specificity, "min.specificity")), bootstrap_options(boot.n, seed))
  remarks <- .Call(C_new_remarks)
  rows <- lapply(method, function(criterion) ask_areas(fit, options, function(cases, options, area) {
    if (is.null(prevalence)) say_sample_prevalence(remarks, area)
    best_rows(cases, options, area, criterion, remarks)
  }))
  say(remarks, "best-on-same-data")
  frame <- below(rows)
  answer_table(frame, fit, "Best cut-offs",
               c(shares_line(fit, options), prevalence_line(fit, prevalence, quantities), reached_line(frame, options)),
               shown = c("value", "chosen", if (any(grepl("=", method))) "reached", main_quantities),
               remarks = remarks)
}

#' The interval of the rate reached, beside which that of the row is too short.
reached_line <- function(frame, options) {
  interval <- unique(frame$reached_interval[!is.na(frame$reached_interval)])
  if (length(interval) > 0)
    paste0("reached: the other rate where a share is held, interval ", interval, drawn(interval, options),
           ", which knows\n  that the cut-off was chosen; those of the row do not")
}

#' A row for each of the cut-offs that are best by one criterion.
best_rows <- function(cases, options, area, criterion, remarks) {
  best <- .Call(C_ask_best, cases, options, criterion)
  count <- length(best$cut_off)
  if (count == 0) say(remarks, "criterion-unmet", area$subject, criterion)
  rate <- no_rate
  if (grepl("=", criterion)) {
    rate <- answer(.Call(C_ask_rate, cases, options, criterion))
    say_area(remarks, area, list(std_error = 1, interval = "bootstrap", percentile = 0, held = 0))
    if (rate$reached_error %in% 0) say(remarks, "zero-error", area$subject)
  }
  repeated <- function(columns) lapply(columns, rep, count)
  c(repeated(list(criterion = criterion)), best["cut_off"], repeated(best["value"]),
    list(chosen = seq_len(count) == best$chosen), points_at(cases, options, area, best$cut_off, quantities)[-1],
    repeated(rate[names(no_rate)]))
}

no_rate <- list(reached = NA_real_, reached_lower = NA_real_, reached_upper = NA_real_, reached_error = NA_real_,
                reached_interval = NA_character_, interpolated = NA_real_)

partial_area <- function(fit, partial.auc = c(1, 0.9), partial.auc.focus = c("specificity", "sensitivity"),
                         ci.method = c("logit", "wald", "bootstrap", "bca"), boot.n = 1999, seed = 1,
                         level = fit$study$settings$confidence_level, conf.level = level, ...) {
  refuse_others(partial_area, ...)
  check_fit(fit)
  focus <- choice(partial.auc.focus, "partial.auc.focus", partial_area)
  rates <- band_of(partial.auc, focus)
  options <- c(list(level = one_level(level, conf.level, missing(level) || missing(conf.level)),
                    interval = choice(ci.method, "ci.method", partial_area)), bootstrap_options(boot.n, seed))
  remarks <- .Call(C_new_remarks)
  frame <- ask_areas(fit, options, function(cases, options, area) {
    partial <- answer(.Call(C_ask_partial, cases, options, rates$rate, rates$band))
    if (partial$few != 0) say(remarks, "few-in-band", area$subject)
    say_area(remarks, area, partial)
    c(area[cases_columns], rate = rates$rate, partial)
  })
  answer_table(without(frame, "edge", "few", "percentile", "held"), fit, "Partial areas under ROC curves",
               c(rates$line, interval_line(frame, options)),
               shown = c(cases_columns, "partial_area", "std_error", "lower", "upper", "standardized",
                         "standardized_lower", "standardized_upper"),
               remarks = remarks)
}

#' Specificities are as many false positive rates, in decimals as they are written: 1 - 0.9 is 0.1.
band_of <- function(partial.auc, focus) {
  if (!is.numeric(partial.auc) || length(partial.auc) != 2 || !isTRUE(all(partial.auc >= 0 & partial.auc <= 1)) ||
      partial.auc[1] == partial.auc[2])
    fail("`partial.auc` is two shares of ", focus, ", such as c(1, 0.9), not ", shown(partial.auc))
  band <- sort(as.double(partial.auc))
  line <- paste0("Band: ", focus, " from ", band[1], " to ", band[2])
  if (focus == "sensitivity") return(list(rate = "tpr", band = band, line = line))
  fpr <- as.double(sprintf("%.15g", 1 - rev(band)))
  list(rate = "fpr", band = fpr, line = paste0(line, " (false positive rate from ", fpr[1], " to ", fpr[2], ")"))
}

pr_area <- function(fit, rule = c("integral", "step", "trapezoid"),
                    ci.method = c("logit", "binomial", "bootstrap", "bca"), prevalence = NULL, boot.n = 1999, seed = 1,
                    level = fit$study$settings$confidence_level, conf.level = level, ...) {
  refuse_others(pr_area, ...)
  check_fit(fit)
  rule <- choice(rule, "rule", pr_area)
  options <- c(list(level = one_level(level, conf.level, missing(level) || missing(conf.level)),
                    interval = choice(ci.method, "ci.method", pr_area), prevalence = share(prevalence)),
               bootstrap_options(boot.n, seed))
  remarks <- .Call(C_new_remarks)
  frame <- ask_areas(fit, options, function(cases, options, area) {
    if (is.null(prevalence)) say_sample_prevalence(remarks, area)
    curve <- answer(.Call(C_ask_precision_recall, cases, options, rule))
    if (curve$edge != 0) say(remarks, "pr-edge", area$subject)
    if (!is.null(prevalence) && !options$interval %in% c("bootstrap", "bca")) say(remarks, "no-interval-at-prevalence")
    say_area(remarks, area, c(curve, std_error = 1))
    c(area[cases_columns], curve)
  })
  answer_table(without(frame, "edge", "percentile", "held"), fit, "Areas under precision-recall curves",
               c(paste0("Rule: ", rule, ", at ", prevalence_in_words(fit, prevalence)),
                 if (has_probabilities(fit)) no_weighted
                 else if (is.null(prevalence) || !all(is.na(frame$lower))) interval_line(frame, options)
                 else "No interval: at a stated prevalence bootstrap and bca alone have one"),
               shown = c(cases_columns, "pr_area", "lower", "upper", "prevalence"), remarks = remarks)
}

net_benefit <- function(fit, at, prevalence = NULL, ...) {
  refuse_others(net_benefit, ...)
  check_fit(fit)
  if (missing(at)) at <- NULL
  if (!is.numeric(at) || !isTRUE(all(at > 0 & at < 1)))
    fail("`at` is thresholds of risk between 0 and 1, such as c(0.05, 0.1, 0.2), not ", shown(at))
  options <- list(prevalence = share(prevalence))
  at <- as.double(at)
  remarks <- .Call(C_new_remarks)
  frame <- ask_areas(fit, options, function(cases, options, area) {
    benefit <- .Call(C_ask_benefit, cases, options, at)
    scores <- .Call(C_ask_calibration, cases, options)
    if (scores$differs != 0)
      say(remarks, "not-calibrated", area$subject,
          sprintf("mean score %.4g, prevalence %.4g", scores$mean_score, scores$observed))
    held <- if (is.null(prevalence)) area$prevalence else prevalence
    whole <- c(area[c("positive", "negative")], prevalence = held, scores[c("mean_score", "observed")])
    c(list(threshold = at), benefit[c("net_benefit", "treat_all")], list(treat_none = rep(0, length(at))),
      benefit[c("true_positive", "false_positive")], lapply(whole, rep, length(at)))
  })
  answer_table(frame, fit, "Net benefit", paste("At", prevalence_in_words(fit, prevalence)),
               shown = c("net_benefit", "treat_all", "treat_none", "mean_score", "observed"), remarks = remarks)
}

mann_whitney <- function(fit, exact = c("auto", "always", "never"),
                         alternative = c("two.sided", "greater", "less"), correct = TRUE, ...) {
  refuse_others(mann_whitney, ...)
  check_fit(fit)
  if (!isTRUE(correct) && !isFALSE(correct)) fail("`correct` is TRUE or FALSE, not ", shown(correct))
  options <- list(p_method = "mann-whitney", exact = exactness(exact), uncorrected = 1 - correct,
                  alternative = side(alternative))
  frame <- ask_areas(fit, options, function(cases, options, area)
    c(area[c(cases_columns, "area")], answer(.Call(C_ask_area, cases, options))))
  answer_table(frame, fit, "Mann-Whitney tests of the area 0.5", paste("Alternative:", options$alternative),
               shown = c(cases_columns, "area", "u", "z", "p_value", "p_method"),
               remarks = .Call(C_new_remarks))
}
