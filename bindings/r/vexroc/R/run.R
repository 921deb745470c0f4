#' Runs the analysis of a study. The result has its cautions and notes, those of the labels among them, and those of
#' `codes`, which are about the whole.
run_study <- function(study, comparison, codes = character()) {
  numbers <- Filter(Negate(is.null), study[c("weight", "count")])
  columns <- c(coded_column(study$state), study$tests, coded_column(study$group), numbers)
  parts <- c("state", rep("test", length(study$tests)), if (!is.null(study$group)) "group", names(numbers))
  settings <- c(study$settings, comparison = comparison,
                if (!is.null(study$group)) list(group_first = 0, group_second = 1))
  remarks <- .Call(C_new_remarks)
  result <- answer(.Call(C_analyze, columns, parts, settings, c(NA, study$directions), remarks))
  result$left_out <- rows_left_out(result$rows)
  if (!is.null(result$status)) fail(status_sentence(result$status, result$name), left_out_sentence(result$left_out))
  for (code in codes) say(remarks, code)
  c(result, split_remarks(Map(c, study$remarks, .Call(C_read_remarks, remarks))))
}

split_remarks <- function(remarks) {
  of <- function(rows) frame_of(lapply(remarks[c("code", "count", "text")], `[`, rows))
  list(cautions = of(remarks$caution), notes = of(!remarks$caution))
}

#' A column of codes 0, 1, ... under its name, with what they mean.
coded_column <- function(column)
  if (!is.null(column)) setNames(list(structure(column$codes, labels = column$values)), column$name)

#' The line of a remark about the whole.
remark_line <- function(code) {
  remarks <- .Call(C_new_remarks)
  say(remarks, code)
  .Call(C_read_remarks, remarks)$text
}

#' A warning for each caution that was not given before.
warn <- function(cautions, before = NULL) {
  for (i in which(!cautions$text %in% before$text))
    warning(structure(class = c("vexroc_caution", "warning", "condition"),
                      list(message = cautions$text[i], call = NULL, code = cautions$code[i])))
}

#' Numbers of the rows that do not enter, by the first reason that holds.
rows_left_out <- function(rows) {
  counts <- unlist(rows)
  names(counts) <- gsub("_", " ", names(counts))
  counts[counts > 0]
}

left_out_sentence <- function(counts)
  if (length(counts) > 0)
    paste0("\nRows left out: ", sum(counts), " (", paste(names(counts), counts, collapse = ", "), ")")

status_sentence <- function(status, name) {
  sentence <- switch(as.character(status),
    "430004" = remark_line("no-positive"),
    "430010" = remark_line("no-case"),
    "430011" = "an independent comparison needs two groups, but all values of the group are equal",
    "430012" = "an independent comparison needs cases of every test in both groups",
    "the analysis broke off")
  paste0(sentence, " (", status, " ", name, ")")
}
