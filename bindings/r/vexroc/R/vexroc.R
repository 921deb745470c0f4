vexroc <- function(x, ...) UseMethod("vexroc")

vexroc.formula <- function(x, data = environment(x), group = NULL, weight = NULL, count = NULL, subset = NULL, ...) {
  if (missing(x)) fail("the formula comes first and has no name: vexroc(state ~ test, data)")
  if (length(x) != 3) fail("the formula needs a state on its left side, such as diagnosis ~ radius")
  inside <- function(expression) eval(expression, data, environment(x))
  parts <- split_bar(x)
  group <- substitute(group)
  if (!is.null(parts$group) && !is.null(group)) fail("the group is given twice: after | and as `group`")
  if (is.null(group)) group <- parts$group
  columns <- formula_columns(parts$formula, data, group)
  study <- list(tests = columns$tests, state = columns$state, group = inside(group),
                weight = inside(substitute(weight)), count = inside(substitute(count)))
  rows <- inside(substitute(subset))
  if (!is.null(rows)) study <- subset_study(study, rows)
  named <- function(column, expression) if (!is.null(column)) setNames(list(column), deparse1(expression))
  call <- match.call()
  vexroc.default(study$tests, named(study$state, x[[2]]), group = named(study$group, group), weight = study$weight,
                 count = study$count, call = call, ...)
}

vexroc.default <- function(x, state, positive = NULL, negative = NULL, group = NULL, groups = NULL, weight = NULL,
                           weight.kind = NULL, count = NULL, missing = NULL, direction = "larger",
                           cut_off = c("include", "exclude"), distribution = c("nonparam", "bi-negative"),
                           interpolation = c("davis-goadrich", "keilwagen"),
                           ci.method = c("recommended", "score", "newcombe", "logit", "wald", "wald-delong",
                                         "bootstrap", "bca"),
                           p.method = c("recommended", "mann-whitney", "wald"), exact = c("auto", "always", "never"),
                           null = 0.5, alternative = c("two.sided", "greater", "less"), boot.n = 1999, seed = 1,
                           level = 0.95, conf.level = level, pr = FALSE, call = match.call(), ...) {
  refuse_others(vexroc.default, ...)
  if (missing(x) || missing(state)) fail("tests and state are both needed: ", call_forms)
  if (!isTRUE(pr) && !isFALSE(pr)) fail("`pr` is TRUE or FALSE, not ", shown(pr))
  if (!is.null(weight.kind) && !isTRUE(weight.kind %in% c("counts", "probability")))
    fail("`weight.kind` is ", quoted(c("counts", "probability")), ", not ", shown(weight.kind))
  missing <- missing_words(missing)
  check_order(x, state, positive)
  tests <- numeric_tests(x)
  settings <- c(bootstrap_options(boot.n, seed), negative_value = 0, cut_off = choice(cut_off, "cut_off"),
                distribution = choice(distribution, "distribution"),
                interpolation = choice(interpolation, "interpolation"), interval = choice(ci.method, "ci.method"),
                p_value = choice(p.method, "p.method"), exact = exactness(exact), null_area = one_number(null, "null"),
                alternative = side(alternative), cases = "pairwise",
                confidence_level = one_level(level, conf.level, missing(level) || missing(conf.level)),
                pr = as.numeric(pr), summaries = 1, weight_kind = weight.kind)
  remarks <- .Call(C_new_remarks)
  study <- list(tests = tests, directions = directions(direction, names(tests)),
                state = state_codes(state, positive, negative, missing, remarks),
                group = if (!is.null(group)) group_codes(group, groups, missing, remarks),
                weight = case_numbers(weight, "weight"), count = case_numbers(count, "count"),
                settings = settings)
  study$remarks <- .Call(C_read_remarks, remarks)
  check_columns(study)
  result <- run_study(study, "none")
  warn(result$cautions)
  call[[1]] <- as.name("vexroc") # so that update() finds it
  structure(list(call = call, study = study, areas = area_frame(result, study), result = result,
                 cautions = result$cautions, notes = result$notes, left_out = result$left_out),
            class = "vexroc")
}

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
  pick <- function(column) as_class_of(column, if (is.matrix(column)) column[rows, , drop = FALSE] else column[rows])
  study$tests <- lapply(study$tests, pick)
  study[-1] <- lapply(study[-1], pick)
  study
}
