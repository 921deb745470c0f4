others <- function() structure("others", class = "vexroc_others")

print.vexroc_others <- function(x, ...) cat("all other values\n")

is_integer64 <- function(x) inherits(x, "integer64")

#' A part keeps the class integer64 only where the package that it comes from is loaded.
as_class_of <- function(whole, part) {
  if (is_integer64(whole)) oldClass(part) <- "integer64"
  part
}

#' Tests come before the state; response before predictor, as in other packages, would be computed the wrong way round.
check_order <- function(x, state, positive) {
  if (is.list(state) && length(state) == 1) state <- state[[1]]
  alone <- is.atomic(x) && is.null(dim(x))
  if (alone && !is.numeric(x) && !is.logical(x) && is.numeric(state) && !is_integer64(x))
    fail("the first argument is of class ", class(x)[1], ", and tests are numbers: is it the state? The order is ",
         call_forms)
  if (!is.numeric(state) || is.factor(state) || is_integer64(state)) return(invisible())
  values <- unique(state[!is.na(state)])
  if (length(values) > 10 && any(values != round(values)))
    fail("the state has ", length(values), " different numbers with fractions, as a test has: is the order wrong? ",
         "It is ", call_forms, "; a number is cut into states by an expression, such as marker >= 3")
  if (alone && !is_integer64(x) && is.null(positive) && length(values) > 2 && length(unique(x[!is.na(x)])) == 2)
    fail("the state has ", length(values), " values and the test two: is the order wrong? It is ", call_forms,
         "; if it is right, name the states with `positive` and `negative`")
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
  twice <- names(tests)[duplicated(names(tests))]
  if (length(twice) > 0) fail("two tests are called '", twice[1], "'; give each a name of its own")
  Map(function(test, name) as_numbers(test, paste0("test '", name, "'")), tests, names(tests))
}

columns_of <- function(column, name) {
  if (!is.matrix(column)) return(setNames(list(column), name))
  names <- if (is.null(colnames(column))) paste0(name, seq_len(ncol(column)), recycle0 = TRUE) else colnames(column)
  setNames(lapply(seq_len(ncol(column)), function(i) as_class_of(column, column[, i])), names)
}

#' Doubles of numbers or logical values.
as_numbers <- function(x, what) {
  if (is_integer64(x)) return(doubles_of_integer64(x, what))
  if (is.numeric(x) || is.logical(x)) return(as.double(x))
  fail(what, " is of class ", class(x)[1], "; it has to be numbers", advice_on(x))
}

#' How texts and levels become numbers, and the first text that spells none.
advice_on <- function(x) {
  if (is.ordered(x)) return(", such as as.integer() makes of the order of its levels")
  if (!is.character(x) && !is.factor(x)) return("")
  texts <- as.character(x)
  wrong <- which(!is.na(texts) & is.na(suppressWarnings(as.numeric(texts))))
  convert <- if (is.factor(x)) "as.numeric(as.character())" else "as.numeric()"
  if (length(wrong) == 0) return(paste0(", such as ", convert, " makes of it"))
  more <- length(unique(texts[wrong])) - 1
  paste0(", and ", shown(texts[wrong[1]]), " in row ", wrong[1], " is none",
         if (more > 0) paste0(", nor ", if (more == 1) "is 1 other text" else paste("are", more, "other texts")),
         ": replace what is no number by one or by NA, then convert with ", convert)
}

doubles_of_integer64 <- function(x, what) {
  numbers <- as.double(.Call(C_integer64_texts, x))
  if (any(abs(numbers) > 2^53, na.rm = TRUE))
    fail(what, " has whole numbers beyond 2^53, which are not told apart as numbers of R: subtract a constant first")
  numbers
}

case_numbers <- function(x, name) {
  if (is.null(x)) return(NULL)
  if (!is.numeric(x) && !is_integer64(x))
    fail("the ", name, " is of class ", class(x)[1], "; it is a number of cases")
  as_numbers(x, paste("the", name))
}

#' Texts of values; numbers that differ after the fifteenth digit do so here too. NA for NaN.
texts_of <- function(values) {
  if (is_integer64(values)) return(.Call(C_integer64_texts, values))
  if (!is.numeric(values) || is.factor(values)) return(enc2utf8(as.character(values)))
  texts <- sprintf("%.15g", values)
  long <- is.finite(values) & as.double(texts) != values
  texts[long] <- sprintf("%.17g", values[long])
  texts[is.na(values)] <- NA
  texts
}

#' A column of labels: its name, different texts and rows of each, for the library, and the text of each row.
label_column <- function(x, name) {
  if (is.list(x) && length(x) == 1) {
    if (!is.null(names(x))) name <- names(x)
    x <- x[[1]]
  }
  if (!is.atomic(x) || !is.null(dim(x)))
    fail("the ", name, " is of class ", class(x)[1], "; it is a factor, text, numbers or logical values")
  texts_only <- is.character(x)
  if (is_integer64(x)) x <- texts_of(x)
  values <- if (is.factor(x)) levels(x)[tabulate(x, nlevels(x)) > 0] else unique(x[!is.na(x)])
  at <- match(x, values)
  list(name = enc2utf8(name), texts = texts_of(values), counts = as.double(tabulate(at, length(values))),
       logical = is.logical(x), at = at, levels = levels(x), texts_only = texts_only)
}

#' What the texts of a column mean; `missing` is further words for a missing value, or FALSE for none.
read_labels <- function(column, missing, named = character(), choice = NULL, remarks = NULL)
  .Call(C_read_labels, column, missing, named, choice, remarks)

#' Texts of the values that the argument `name` names.
named_values <- function(values, name) {
  if (is.null(values)) return(character())
  if (!is.atomic(values) || anyNA(values))
    fail("`", name, "` is one value or several, none of them NA, not ", shown(values))
  texts_of(values)
}

listed <- function(values) paste(c(head(texts_of(values), 10), if (length(values) > 10) "..."), collapse = ", ")

#' 0 for negative states, 1 for positive ones, 2 for others, NA where it is missing.
state_codes <- function(state, positive, negative, missing, remarks) {
  column <- label_column(state, "state")
  if (length(column$at) == 0) fail("there is no case: the state is empty")
  all_others <- inherits(negative, "vexroc_others")
  negative <- if (all_others) character() else named_values(negative, "negative")
  positive <- if (is.null(positive)) default_positive(column, negative, missing) else named_values(positive, "positive")
  read <- read_labels(column, missing, c(positive, negative), list(positive, negative, all_others), remarks)
  codes <- c(0, 1, 2, NA)[read$state + 1][column$at]
  of <- function(code) paste(unique(read$values[read$value[read$state == code]]), collapse = ", ")
  list(name = column$name, codes = codes, values = c(of(0), of(1)))
}

#' The positive state when it is not named: the one beside the negative ones, the last of two levels, or the larger of
#' two numbers. Of text, whose order means nothing, it has to be named.
default_positive <- function(column, negative, missing) {
  read <- read_labels(column, missing, negative)
  if (length(read$values) < 2)
    fail("the state ", if (length(read$values) == 0) "of every case is missing" else
      paste0("is ", read$values, " in every case: there is no other to tell it from"))
  rest <- setdiff(seq_along(read$values), read$named)
  if (length(rest) == 1) return(read$values[rest])
  ordered <- if (is.null(column$levels)) read$values else intersect(column$levels, read$values)
  if (length(rest) == 2 && length(ordered) == 2 && !column$texts_only) ordered[2] else character()
}

#' 0 and 1 for the two groups, in the order in which they are named; 2 for others, NA for none.
group_codes <- function(group, groups, missing, remarks) {
  column <- label_column(group, "group")
  read <- read_labels(column, missing, named_values(groups, "groups"), NULL, remarks)
  values <- read$values
  if (length(column$at) > 0 && length(values) < 2)
    fail("the group has ", if (length(values) == 0) "no value" else c("only the value ", values), "; groups are two")
  if (is.null(groups) && length(values) > 2)
    fail("the group has the values ", listed(values), "; name two of them with `groups`")
  at <- if (is.null(groups)) order_of_levels(values, column$levels) else read$named
  if (length(at) != 2 || any(at == 0) || at[1] == at[2])
    fail("`groups` names two values of the group, which has ", listed(values), "; it is ", listed(groups))
  codes <- as.double(match(read$value, at, nomatch = 3L) - 1)
  codes[read$value == 0] <- NA
  list(name = column$name, codes = codes[column$at], values = values[at])
}

#' In the order of levels, else in the library's.
order_of_levels <- function(values, levels)
  if (is.null(levels)) seq_along(values) else order(match(values, levels))

check_columns <- function(study) {
  rows <- length(study$state$codes)
  if (!is.null(study$weight) && !is.null(study$count))
    fail("`count` and `weight` do not go together: `count` is the number of cases of a row, for all results")
  lengths <- lengths(c(study$tests, list(group = study$group$codes, weight = study$weight, count = study$count)))
  wrong <- lengths != rows & !(names(lengths) %in% c("group", "weight", "count") & lengths == 0)
  if (any(wrong))
    fail("'", names(lengths)[wrong][1], "' has ", lengths[wrong][1], " values; the state has ", rows)
}
