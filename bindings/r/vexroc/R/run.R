#' Runs the analysis of a study. The result has its cautions and notes, those of the labels among them.
run_study <- function(study, comparison) {
  group <- study$group
  columns <- c(list(structure(study$state$codes, labels = c(study$state$negative, study$state$positive))), study$tests,
               if (!is.null(group)) list(structure(group$codes, labels = group$values)),
               if (!is.null(study$weight)) list(study$weight), if (!is.null(study$count)) list(study$count))
  parts <- c("state", rep("test", length(study$tests)), if (!is.null(group)) "group",
             if (!is.null(study$weight)) "weight", if (!is.null(study$count)) "count")
  own <- parts != "test"
  names(columns)[own] <- c(study$state$name, group$name, parts[parts %in% c("weight", "count")])
  settings <- c(study$settings, comparison = comparison, if (!is.null(group)) list(group_first = 0, group_second = 1))
  remarks <- .Call(C_new_remarks)
  result <- .Call(C_analyze, columns, parts, settings, c(NA, study$directions), remarks)
  if (is.null(result)) {
    signalCondition(structure(class = c("interrupt", "condition"), list(message = "", call = NULL)))
    invokeRestart("abort")
  }
  result$left_out <- rows_left_out(result$rows)
  if (!is.null(result$status)) fail(status_sentence(result$status, result$name), left_out_sentence(result$left_out))
  remarks <- Map(c, study$remarks, .Call(C_read_remarks, remarks))
  of <- function(rows) frame_of(lapply(remarks[c("code", "count", "text")], `[`, rows))
  c(result, list(cautions = of(remarks$caution), notes = of(!remarks$caution)))
}

#' A warning for each caution that was not given before.
warn <- function(cautions, before = cautions[0, ]) {
  for (i in which(!cautions$text %in% before$text))
    warning(structure(class = c("vexroc_caution", "warning", "condition"),
                      list(message = cautions$text[i], call = NULL, code = cautions$code[i])))
}

#' Numbers of the rows that do not enter, by the first reason that holds.
rows_left_out <- function(rows) {
  counts <- c("without state" = rows$missing_state, "of other states" = rows$other_state,
              "without group" = rows$missing_group, "of other groups" = rows$other_group,
              "without weight" = rows$missing_weight, "without count" = rows$missing_count,
              "with a weight below 1" = rows$unusable_weight - rows$too_heavy,
              "with a weight beyond 2147483647" = rows$too_heavy)
  if (any(counts > 0)) counts[counts > 0] else numeric()
}

left_out_sentence <- function(counts)
  if (length(counts) > 0)
    paste0("\nRows left out: ", sum(counts), " (", paste(counts, names(counts), collapse = ", "), ")")

status_sentence <- function(status, name) {
  sentence <- switch(as.character(status),
    "430004" = "there is no positive case among the rows that are left",
    "430010" = "no case is left",
    "430011" = "an independent comparison needs two groups, but all values of the group are equal",
    "430012" = "an independent comparison needs cases of every test in both groups",
    "the analysis broke off")
  paste0(sentence, " (", status, " ", name, ")")
}
