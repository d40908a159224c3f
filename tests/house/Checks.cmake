# Checks of the house itself: what the compiler does not see.
set(house ${CMAKE_CURRENT_SOURCE_DIR}/house)

add_test(NAME include_direction COMMAND bash ${house}/include-direction.sh ${PROJECT_SOURCE_DIR})
add_test(NAME tests_registered
    COMMAND bash ${house}/tests-registered.sh ${PROJECT_SOURCE_DIR} ${PROJECT_BINARY_DIR})
add_test(NAME headers_alone
    COMMAND ${CMAKE_COMMAND} --build ${PROJECT_BINARY_DIR} --target all_verify_interface_header_sets)
if(NOT QEL_SANITIZE AND NOT QEL_COVERAGE) # both export names of their own
    add_test(NAME exported_classes COMMAND bash ${house}/exported-classes.sh ${PROJECT_BINARY_DIR})
endif()
add_test(NAME sizes COMMAND bash ${PROJECT_SOURCE_DIR}/scripts/report-sizes)
add_test(NAME readme_example COMMAND bash ${PROJECT_SOURCE_DIR}/scripts/update-readme --check)
add_test(NAME package
    COMMAND bash ${CMAKE_CURRENT_SOURCE_DIR}/package/check.sh ${PROJECT_BINARY_DIR} ${QEL_SANITIZE})

if(TARGET lamps)
    add_test(NAME example_lamps COMMAND lamps WORKING_DIRECTORY ${PROJECT_BINARY_DIR})
    set_tests_properties(example_lamps PROPERTIES
        ENVIRONMENT "LC_ALL=de_DE.UTF-8" PASS_REGULAR_EXPRESSION "^Desk lamp: 1.249,50 EUR\nLantern: 80,00 EUR\n$")
    add_test(NAME example_catalogue
        COMMAND bash ${house}/example-catalogue.sh $<TARGET_FILE:catalogue_host>)
endif()
