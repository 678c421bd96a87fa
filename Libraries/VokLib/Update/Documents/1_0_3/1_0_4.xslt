<?xml version="1.0" encoding="UTF-8"?>
<!-- 1.0.3 to 1.0.4: the default namespace tells the version from here on, and custom data is typed anew. -->
<xsl:stylesheet version="1.0"
    xmlns:xsl="http://www.w3.org/1999/XSL/Transform"
    xmlns="http://qel.example/ns/qeli/1_0_4/qeli">
  <xsl:include href="../Shared/KeepForeignContent.xslt"/>
  <xsl:output method="xml" encoding="UTF-8"/>

  <xsl:template match="/">
    <xsl:if test="name(/*) != 'QEL'">
      <xsl:message terminate="yes">Input instance is not a version 1.0.3 .qeli file.</xsl:message>
    </xsl:if>
    <!-- A root that is called QEL without a prefix can only be in a default namespace. -->
    <xsl:if test="namespace-uri(/*) != ''">
      <xsl:message terminate="yes">
        <xsl:text>Instance already specifies a default namespace. This prevents an update to 1.0.4 </xsl:text>
        <xsl:text>because that uses the default namespace for versioning.</xsl:text>
      </xsl:message>
    </xsl:if>
    <xsl:apply-templates/>
  </xsl:template>

  <xsl:template match="*[namespace-uri() = '']" priority="0">
    <xsl:element name="{local-name()}">
      <xsl:copy-of select="@*"/>
      <xsl:apply-templates/>
    </xsl:element>
  </xsl:template>

  <xsl:template match="dynamicType" priority="1">
    <xsl:copy-of select="."/>
  </xsl:template>

  <xsl:template match="customData/attribute" priority="1">
    <xsl:choose>
      <xsl:when test="@type = 'Vector4'">
        <xsl:message terminate="yes">Vector4 custom data is no longer supported.</xsl:message>
      </xsl:when>
      <xsl:when test="@type = 'Matrix44'">
        <xsl:message terminate="yes">Matrix44 custom data is no longer supported.</xsl:message>
      </xsl:when>
      <xsl:when test="@type = 'Enum'">
        <xsl:message terminate="yes">
          <xsl:text>Enum custom data type found. Version 1.0.4 supplies additional information for enums. </xsl:text>
          <xsl:text>Cannot update this instance.</xsl:text>
        </xsl:message>
      </xsl:when>
      <xsl:when test="@type = 'String'">
        <attribute type="string">
          <xsl:copy-of select="@*[name() != 'type' and name() != 'min' and name() != 'max']"/>
          <xsl:apply-templates/>
        </attribute>
      </xsl:when>
      <xsl:otherwise>
        <attribute>
          <xsl:copy-of select="@*"/>
          <xsl:attribute name="type">
            <xsl:value-of select="translate(@type, 'BIFV', 'bifv')"/>
          </xsl:attribute>
          <xsl:attribute name="value">
            <xsl:value-of select="."/>
          </xsl:attribute>
        </attribute>
      </xsl:otherwise>
    </xsl:choose>
  </xsl:template>
</xsl:stylesheet>
